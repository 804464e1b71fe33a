// Pictures of the main window, for the eye: NORDKEEP_SHOTS names the folder that they go to. Without it
// nothing is drawn.
#include "console/views/lists/ListPane.h"
#include "tests/console/views/WindowWorld.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QStyleFactory>

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

constexpr TextView kLooks =
    "AlarmColorBehaviour=1\r\nColorState_0=8C1D00;FFFFFF\r\nColorState_1=FFE08A;000000\r\n"
    "ColorState_2=0B3C6F;FFFFFF\r\nColorState_3=A9D3F5;000000\r\nColorState_4=D0D0D0;000000\r\n"
    "ColorState_5=FFFFFF;202020\r\nShowSysLog=1\r\nShowDebug=1\r\nShowIdCodes=1\r\nShowTypes=1\r\n"
    "ShowDataCodes=1\r\nViewAliveTestStatusInTree=1\r\n"
    "UnackedStatusBarFormat=[ALARMID]  [TRIDCODE]  [TRTYPECODE]  [PORTDESCRIPTION]\r\n";
constexpr TextView kColumns =
    "[ListView_Unacked]\r\nColumns=DATE,TIME,TRPRIO,TRIDCODE,TRTYPECODE,SIASTATUS,SIAADDRESS,CUSTOMER,"
    "SMALLCOMMENT,USER,REPEATED,ALARMCODETOSTORE,PORTDESCRIPTION,ALARMID\r\n"
    "Column1=85\r\nColumn2=70\r\nColumn3=45\r\nColumn4=190\r\nColumn5=170\r\nColumn6=120\r\nColumn7=120\r\n"
    "Column8=150\r\nColumn9=150\r\nColumn10=70\r\nColumn11=80\r\nColumn12=260\r\nColumn13=120\r\nColumn14="
    "70\r\n"
    "[ListView_Acked]\r\nColumns=DATE,TIME,ACKDATE,ACKTIME,TRPRIO,TRIDCODE,TRTYPECODE\r\n"
    "Column1=85\r\nColumn2=70\r\nColumn3=85\r\nColumn4=70\r\nColumn5=45\r\nColumn6=190\r\nColumn7=170\r\n";

QPalette DarkPalette() {
    QPalette dark(QColor(0x2B, 0x2F, 0x36));
    dark.setColor(QPalette::Base, QColor(0x1E, 0x21, 0x26));
    dark.setColor(QPalette::Highlight, QColor(0x5B, 0x9B, 0xF0));
    for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
        dark.setColor(QPalette::Disabled, role, QColor(0x7B, 0x82, 0x8C));
    }
    dark.setColor(QPalette::PlaceholderText, QColor(0x9A, 0xA2, 0xAD));
    return dark;
}

void Fill(MainBoxWorld& world) {
    const char* objects[] = {"School, Storgatan 4", "Shop, Kungsgatan 12", "Water works", "Hotel Norden"};
    const char* types[] = {"Fire", "Burglary", "Technical fault", "Power lost", "Line fault"};
    for (int i = 0; i < 60; ++i) {
        cAlarm& alarm = world.Raise(types[i % 5], i % 11 == 10 ? 5 : i % 5);
        alarm.m_TranslatedIDCode = objects[i % 4];
        alarm.m_TranslatedPrio = std::to_string(1 + i % 4);
        alarm.m_AlarmId = 100 + i;
        alarm.m_Repeated = i % 9 == 8 ? -1 : 0;
        alarm.m_User = i % 5 == 1 ? "ANK" : "   ";
        alarm.m_SmallComment = i % 5 == 1 ? "Guard on the way" : "";
        alarm.m_AlarmCodeToStore = std::string(types[i % 5]) + " in section " + std::to_string(i % 7);
        if (alarm.m_Status == 5) alarm.m_AckedTime = world.time.Now();
        world.running->store.UpdateAlarmLists(alarm);
        world.time.Advance(7000);
    }
    world.running->log.WriteSysLog("Nordkeep started, version 0.1.0", LogKind::Information);
    world.running->log.WriteSysLog("Could not open port: 'Port2' (PortSettings = COM2:9600,N,8,1)",
                                   LogKind::Failure);
    world.running->log.WriteSysLog("Port settings have changed", LogKind::Oddity);
    world.running->log.WriteSysLog("Fire in section 2 School, Storgatan 4", LogKind::Alarm);
    world.Tick();
}

void Save(QWidget& widget, const QString& folder, const QString& name) {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
    widget.grab().save(folder + "/" + name + ".png");
}

/// The popup of a list, which waits until it is closed.
void SavePopup(QWidget& window, ListPane& list, const QString& folder, const QString& name) {
    QTimer::singleShot(100, &window, [&] {
        QWidget* popup = QApplication::activePopupWidget();
        if (!popup) return;
        Save(*popup, folder, name);
        popup->close();
    });
    list.onPopup(window.mapToGlobal(QPoint(300, 200)));
}

TEST(MainWindowShots, AreTaken) {
    const QString folder = qEnvironmentVariable("NORDKEEP_SHOTS");
    if (folder.isEmpty()) GTEST_SKIP() << "only on demand";
    const QPalette light = QApplication::palette();
    for (const bool isDark : {false, true}) {
        QApplication::setPalette(isDark ? DarkPalette() : light);
        for (const char* number : {"044", "046"}) {
            MainBoxWorld world;
            world.UseLanguage(number);
            world.WriteGeneral(Text(kLooks), Text(kColumns));
            world.Start();
            FakeUserStore store;
            MainWindow window(WindowOf(world, store));
            window.resize(1280, 760);
            window.show();
            Fill(world);
            const QString name =
                QString::fromLatin1(isDark ? "dark_" : "light_") + QString::fromLatin1(number);
            Save(window, folder, name + "_0");
            AlarmRows& rows = world.running->lists.Unacked();
            const std::vector<Text> keys = {rows.KeyOf(2), rows.KeyOf(3), rows.KeyOf(6)};
            world.Box().Select(Tab::Unacked, {keys, keys.front()});
            window.ShowSelection(Tab::Unacked);
            rows.ClickHeading(3);
            Save(window, folder, name + "_0s");
            if (isDark && number[2] == '4')
                world.around.conditions = {{.kind = ConditionKind::LinesDisabled}};
            world.Box().Objects().SelectNode(2);
            world.Box().ShowTab(Tab::IdCodes);
            world.time.Advance(1000);
            for (int i = 0; i < 5; ++i) world.Tick();
            Save(window, folder, name + "_4");
            RowModel& objects = world.Box().ListOf(Tab::IdCodes);
            world.Box().Select(Tab::IdCodes, {{objects.KeyOf(0)}, objects.KeyOf(0)});
            window.ShowSelection(Tab::IdCodes);
            SavePopup(window, *window.ListOf(Tab::IdCodes), folder, name + "_popup");
            window.ActionOf(Command::Keys)->trigger();
            for (QDialog* sheet : window.findChildren<QDialog*>()) {
                if (sheet->isVisible()) Save(*sheet, folder, name + "_keys");
                sheet->close();
            }
            if (!isDark) {
                for (const Tab tab : {Tab::Acked, Tab::SysLog, Tab::Debug, Tab::Types, Tab::DataCodes}) {
                    world.Box().ShowTab(tab);
                    world.Tick();
                    Save(window, folder, name + "_" + QString::number(static_cast<int>(tab)));
                }
            }
        }
    }
    QApplication::setPalette(light);
}

}  // namespace
}  // namespace nordkeep
