#include "console/views/lists/ListPane.h"
#include "console/views/lists/Theme.h"
#include "console/views/lists/TreePane.h"
#include "console/views/window/ConditionStrip.h"
#include "platform/qt/QtText.h"
#include "tests/console/views/SpokenNames.h"
#include "tests/console/views/WindowWorld.h"

#include <QtCore/QElapsedTimer>
#include <QtGui/QTextDocument>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolBar>

#include <gtest/gtest.h>

#include <random>

namespace nordkeep {
namespace {

constexpr TextView kAllPages =
    "ShowSysLog=1\r\nShowDebug=1\r\nShowIdCodes=1\r\nShowTypes=1\r\nShowDataCodes=1\r\n";
constexpr TextView kColumns =
    "[ListView_Unacked]\r\nColumns=TRTYPECODE,CUSTOMER,ALARMCODETOSTORE\r\n"
    "[ListView_Acked]\r\nColumns=TRTYPECODE,CUSTOMER\r\n";

/// The captions of one language that the other does not have.
QStringList CaptionsOnlyIn(const std::string& one, const std::string& other) {
    QStringList only;
    MainBoxWorld known;
    known.UseLanguage(other);
    QStringList others;
    for (const BuiltInCaption& caption : BuiltInCaptions()) {
        others << ToQString(known.language.GetLanguageText(caption.number));
    }
    known.UseLanguage(one);
    for (const BuiltInCaption& caption : BuiltInCaptions()) {
        const QString text = ToQString(known.language.GetLanguageText(caption.number));
        if (!others.contains(text)) only << text;
    }
    return only;
}

class MainWindowTest : public ::testing::Test {
 protected:
    void Start(const Text& general = {}) {
        window.reset();
        world.WriteGeneral(Text(kAllPages) + general, Text(kColumns));
        world.Start();
        window = std::make_unique<MainWindow>(WindowOf(world, store));
        window->resize(1000, 700);
        window->show();
        QApplication::processEvents();
    }
    ~MainWindowTest() override { window.reset(); }

    void Tick() {
        world.Tick();
        QApplication::processEvents();
    }
    ListPane& List(Tab tab = Tab::Unacked) { return *window->ListOf(tab); }
    QImage Grab(QWidget& widget) { return widget.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    MainBoxWorld world{};
    FakeUserStore store{};
    std::unique_ptr<MainWindow> window{};
};

TEST_F(MainWindowTest, SpeaksOneLanguageAndElidesNothing) {
    for (const char* language : {"044", "046"}) {
        world.UseLanguage(language);
        Start();
        world.Raise();
        Tick();
        QStringList texts;
        for (const QAction* action : window->findChildren<QAction*>()) texts << action->text();
        for (const QLabel* label : window->findChildren<QLabel*>()) {
            texts << label->text();
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
        }
        for (const QAbstractButton* button : window->findChildren<QAbstractButton*>())
            texts << button->text();
        for (const QLineEdit* edit : window->findChildren<QLineEdit*>()) texts << edit->placeholderText();
        const auto* pages = window->findChild<QTabWidget*>();
        for (int page = 0; page < pages->count(); ++page) texts << pages->tabText(page);
        for (int number = 0; number < kTabCount; ++number) {
            const ListPane& list = List(static_cast<Tab>(number));
            for (int column = 1; column < list.model()->columnCount(); ++column) {
                texts << list.model()->headerData(column, Qt::Horizontal).toString();
            }
        }
        const QStringList foreign = CaptionsOnlyIn(language == std::string("044") ? "046" : "044", language);
        for (const QString& text : texts) {
            EXPECT_FALSE(foreign.contains(text)) << text.toStdString();
            EXPECT_FALSE(text.contains(QLatin1String("Invalid Text")) || text.contains(QLatin1String("%1")))
                << text.toStdString();
        }
        for (int number = 0; number < kCommandCount; ++number) {
            EXPECT_FALSE(window->ActionOf(static_cast<Command>(number))->text().isEmpty()) << number;
        }
        for (const QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
            if (!button->isVisible() || button->text().isEmpty()) continue;
            EXPECT_GE(button->width() + 1, button->sizeHint().width()) << button->text().toStdString();
        }
    }
}

TEST_F(MainWindowTest, SaysWhatItShows) {
    Start();
    world.Raise();
    Tick();
    for (QWidget* control : ControlsOf(*window)) {
        EXPECT_FALSE(NameOfControl(*control).trimmed().isEmpty()) << control->metaObject()->className();
    }
    world.Box().Objects().ShowTree({{0, "Receiver"}});
    QString node;
    QString wrong;
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (const auto* tree = dynamic_cast<TreePane*>(widget))
            node = tree->model()->index(0, 0).data(Qt::AccessibleTextRole).toString();
        if (const auto* strip = dynamic_cast<ConditionStrip*>(widget)) wrong = strip->accessibleDescription();
    }
    EXPECT_TRUE(node.contains(u'\n')) << "the name, and how it is: " << node.toStdString();
    EXPECT_FALSE(wrong.isEmpty());
}

TEST_F(MainWindowTest, TheSearchFieldLeadsThroughEveryList) {
    Start();
    world.Box().Objects().ShowTree({{0, "Receiver"}, {1, "Robofon"}, {2, "Town"}});
    world.Box().Objects().SelectNode(2);
    world.Box().ShowTab(Tab::IdCodes);
    Tick();
    QLineEdit* field = nullptr;
    for (QLineEdit* edit : window->findChildren<QLineEdit*>()) {
        if (edit->placeholderText().contains(QLatin1String("Ctrl+F"))) field = edit;
    }
    ASSERT_TRUE(field);
    field->setFocus();
    QTest::keyClicks(field, "wor");
    const auto selected = [&] { return world.Box().SelectionOf(Tab::IdCodes).current; };
    EXPECT_EQ(selected(), "1003");
    QTest::keyClicks(field, "\b\b\b");
    field->setText("o");
    QTest::keyClick(field, Qt::Key_Return);
    const Text first = selected();
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_NE(selected(), first) << "Enter leads on";
    ListPane& list = List(Tab::IdCodes);
    list.setFocus();
    QTest::keyClicks(&list, "sch");
    EXPECT_EQ(selected(), "1001");
    EXPECT_EQ(world.Box().Tabs().current, Tab::IdCodes);
}

TEST_F(MainWindowTest, TheAdapterKeepsTheToolkitsRules) {
    Start();
    QAbstractItemModelTester alarms(List().model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    QAbstractItemModelTester old(List(Tab::Acked).model(),
                                 QAbstractItemModelTester::FailureReportingMode::Fatal);
    QAbstractItemModelTester log(List(Tab::SysLog).model(),
                                 QAbstractItemModelTester::FailureReportingMode::Fatal);
    QAbstractItemModelTester tree(window->findChild<TreePane*>()->model(),
                                  QAbstractItemModelTester::FailureReportingMode::Fatal);
    List().Rows().ClickHeading(0);
    std::mt19937 random(3);
    std::vector<cAlarm*> known;
    for (int step = 0; step < 300; ++step) {
        if (known.size() < 5 || random() % 2 == 0) {
            known.push_back(&world.Raise(std::to_string(random() % 50)));
        } else {
            cAlarm& alarm = *known[random() % known.size()];
            alarm.m_TranslatedTypeCode = std::to_string(random() % 50);
            world.SetStatus(alarm, static_cast<int>(random() % 6));
        }
        if (step % 9 == 0) world.running->log.WriteSysLog("line", LogKind::Information);
        if (step % 3 == 0) Tick();
    }
    Tick();
    world.Box().Objects().ForgetTree();
    world.Box().Objects().ShowTree({{0, "a"}, {1, "b"}, {2, "Town"}, {0, "c"}});
    EXPECT_EQ(List().model()->rowCount() + List(Tab::Acked).model()->rowCount(),
              static_cast<int>(known.size()));
}

TEST_F(MainWindowTest, SelectionAndScrollPlaceStayWithTheirRows) {
    for (const bool isSorted : {false, true}) {
        Start();
        for (int i = 0; i < 200; ++i) world.Raise(std::to_string(i));
        Tick();
        if (isSorted) {
            // Newest on top: every new row comes in above what is looked at.
            List().Rows().ClickHeading(0);
            List().Rows().ClickHeading(0);
        }
        List().verticalScrollBar()->setValue(50);
        List().selectRow(55);
        List().setFocus();
        const Text key = List().CurrentKey();
        const Text top = List().Rows().KeyOf(List().verticalScrollBar()->value());
        EXPECT_EQ(world.Box().SelectionOf(Tab::Unacked).current, key);
        QElapsedTimer time;
        qint64 longest = 0;
        for (int i = 0; i < 3000; ++i) {
            cAlarm& alarm = world.Raise(std::to_string(1000 + i));
            world.Box().Alarms().OfferNewAlarm(alarm);
            if (i % 40 != 0) continue;
            time.start();
            Tick();
            longest = std::max(longest, time.elapsed());
        }
        Tick();
        EXPECT_EQ(List().CurrentKey(), key);
        EXPECT_EQ(List().SelectedKeys(), std::vector<Text>{key});
        EXPECT_EQ(List().Rows().KeyOf(List().verticalScrollBar()->value()), top);
        EXPECT_EQ(List().model()->rowCount(), 3200);
        EXPECT_LT(longest, 500) << "ms for one tick";
    }
}

TEST_F(MainWindowTest, ANewAlarmIsSelectedAndRevealedOnlyWhenAsked) {
    Start("AlwaysShowLastAlarm=1\r\nShowTabAutomatic=1\r\n");
    for (int i = 0; i < 100; ++i) world.Raise();
    Tick();
    world.Box().ShowTab(Tab::SysLog);
    cAlarm& alarm = world.Raise();
    world.Box().Alarms().OfferNewAlarm(alarm);
    Tick();
    EXPECT_EQ(List().CurrentKey(), RowKey(alarm));
    EXPECT_TRUE(List().isVisible());
    EXPECT_TRUE(List().viewport()->rect().intersects(List().visualRect(List().currentIndex())));
}

TEST_F(MainWindowTest, PaintsRowsInTheirColoursAlsoWhenSelected) {
    Start("AlarmColorBehaviour=1\r\nColorState_0=8C1D00;FFFFFF\r\nColorState_1=FFE08A;000000\r\n");
    world.Raise("", kStatusNew);
    world.Raise("", kStatusCommented);
    world.Raise("", kStatusReset);
    Tick();
    const auto paper = [&](int row) {
        const QImage image = Grab(*List().viewport());
        const QRect cell = List().visualRect(List().model()->index(row, 1));
        return image.pixelColor(cell.right() - 8, cell.center().y());
    };
    EXPECT_EQ(paper(0), QColor(0x8C, 0x1D, 0x00));
    EXPECT_EQ(paper(1), QColor(0xFF, 0xE0, 0x8A));
    EXPECT_EQ(paper(2), GroundColor(RowGround::Reset, List().palette()))
        << "a pair that is not set is the delivered one";
    List().selectRow(0);
    EXPECT_EQ(paper(0), QColor(0x8C, 0x1D, 0x00));
    const QRect cell = List().visualRect(List().model()->index(0, 1));
    EXPECT_EQ(Grab(*List().viewport()).pixelColor(cell.center().x(), cell.top()),
              List().palette().color(QPalette::Highlight));
}

TEST_F(MainWindowTest, StatusIconsDifferInShape) {
    Start();
    for (int status = 0; status < 5; ++status) world.Raise("", status);
    Tick();
    const QImage image = Grab(*List().viewport());
    std::vector<QImage> icons;
    for (int row = 0; row < 5; ++row) {
        const QRect cell = List().visualRect(List().model()->index(row, 0));
        const QImage icon = image.copy(cell.adjusted(0, 0, -1, -2)).convertToFormat(QImage::Format_Mono);
        for (const QImage& other : icons) EXPECT_NE(icon, other) << row;
        icons.push_back(icon);
        EXPECT_FALSE(List().model()->index(row, 0).data(Qt::AccessibleTextRole).toString().isEmpty());
    }
}

TEST_F(MainWindowTest, EverythingGoesByKeyboard) {
    Start();
    world.Raise("first");
    cAlarm& second = world.Raise("second");
    Tick();
    QTest::keyClick(window.get(), Qt::Key_1, Qt::ControlModifier);
    QTest::keyClick(&List(), Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(&List(), Qt::Key_Down);
    EXPECT_EQ(List().CurrentKey(), List().Rows().KeyOf(0)) << "nothing was selected, so the first step stays";
    QTest::keyClick(&List(), Qt::Key_Down);
    EXPECT_EQ(List().CurrentKey(), RowKey(second));
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_TRUE(world.windows.calls.starts_with("sheet")) << world.windows.calls;
    world.dialogs.answers = {true};
    QTest::keyClick(&List(), Qt::Key_E, Qt::ControlModifier);
    Tick();
    EXPECT_EQ(second.m_Status, kStatusAcknowledged);
    QTest::keyClick(&List(), Qt::Key_F, Qt::ControlModifier);
    QLineEdit* filter = nullptr;
    for (QLineEdit* edit : window->findChildren<QLineEdit*>()) {
        if (edit->hasFocus()) filter = edit;
    }
    ASSERT_TRUE(filter != nullptr);
    QTest::keyClicks(filter, "nothing");
    Tick();
    EXPECT_EQ(List().model()->rowCount(), 0);
    EXPECT_TRUE(world.Box().Wrong().Has(ConditionKind::Hidden));
    QTest::keyClick(filter, Qt::Key_Escape);
    EXPECT_EQ(List().model()->rowCount(), 1);
    EXPECT_TRUE(List().hasFocus());
    world.around.isSounding = true;
    Tick();
    QTest::keyClick(&List(), Qt::Key_F8);
    EXPECT_FALSE(world.around.isSounding);
    QTest::keyClick(&List(), Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(world.Box().Tabs().current, Tab::Acked);
    const int size = List().font().pointSize();
    QTest::keyClick(window.get(), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(List().font().pointSize(), size + 1);
    QTest::keyClick(window.get(), Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(List().font().pointSize(), size);
    QTest::keyClick(window.get(), Qt::Key_F6);
    EXPECT_FALSE(List(Tab::Acked).hasFocus());
}

TEST_F(MainWindowTest, TheKeyForThePopupTestsTheLevelToo) {
    Start();
    world.Raise();
    Tick();
    List().selectRow(0);
    world.around.rights = {Role::Client, 0};
    Tick();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(List().viewport(), &event);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_FALSE(window->ActionOf(Command::CloseAlarm)->isEnabled());
    EXPECT_TRUE(window->ActionOf(Command::FileSoundStop)->isEnabled());
}

TEST_F(MainWindowTest, HostileTextsStandAsTheyAre) {
    Start("ViewAlarmToolTip=1\r\n");
    const Text hostile = "<img src=x>&File %1 \x01\x7F<b>bold</b>";
    cAlarm& alarm = world.Raise(hostile);
    world.Raise(Text(10000, 'x'));
    world.Box().Objects().ShowTree({{0, hostile}, {1, hostile}, {2, hostile}});
    Tick();
    List().selectRow(0);
    EXPECT_EQ(world.Box().SelectionOf(Tab::Unacked).current, RowKey(alarm));
    const auto* info = window->findChild<QPlainTextEdit*>();
    EXPECT_TRUE(info->toPlainText().startsWith(QLatin1String("<img src=x>&File %1 ")));
    const QString tip = List().model()->index(0, 1).data(Qt::ToolTipRole).toString();
    EXPECT_TRUE(tip.contains(QLatin1String("<img")) && !Qt::mightBeRichText(tip));
    const QString line = PlainToolTip(QStringLiteral("<b>x</b>"));
    EXPECT_TRUE(line.contains(QLatin1String("&lt;b&gt;")) && !line.contains(QLatin1String("<b>")));
    for (const QChar character : List().model()->index(0, 1).data().toString()) {
        EXPECT_GE(character.unicode(), 32);
    }
    Grab(*window);
}

TEST_F(MainWindowTest, ClosingAsksAndOnlyThenEnds) {
    Start();
    EXPECT_FALSE(window->close());
    EXPECT_EQ(world.dialogs.questions.size(), 1u);
    EXPECT_TRUE(window->isVisible());
    window->AllowClose();
    EXPECT_TRUE(window->close());
}

TEST_F(MainWindowTest, KeepsGeometryAndWidthsAndComesBackOnScreen) {
    store.values = {
        {"MainBox_Left", -9000}, {"MainBox_Top", 50000}, {"MainBox_Width", 700}, {"MainBox_Height", 500}};
    Start();
    EXPECT_TRUE(QGuiApplication::primaryScreen()->availableGeometry().intersects(window->geometry()));
    List().horizontalHeader()->resizeSection(1, 123);
    window->SaveState();
    EXPECT_EQ(world.running->files.ReadIni("ListView_Unacked", "Column1", ""), "123");
    EXPECT_EQ(world.running->files.ReadIni("ListView_Unacked", "Column2", ""), "") << "only what was changed";
    EXPECT_EQ(store.values["MainBox_Width"], window->width());
}

TEST_F(MainWindowTest, ManyLinesMakeItNoWiderThanASmallScreen) {
    Start();
    std::vector<DebugPort> ports;
    for (int i = 1; i <= 20; ++i)
        ports.push_back({"Port" + std::to_string(i), "A receiver with a long name"});
    world.running->debug.SetPorts(ports);
    world.Box().ShowTab(Tab::Debug);
    Tick();
    EXPECT_LE(window->minimumSizeHint().width(), 1024);
}

TEST_F(MainWindowTest, WindowsOfTheirOwnFollowTheirItems) {
    Start("FloatingSysLogWindow=1\r\nFloatingDebugWindow=1\r\n");
    EXPECT_TRUE(List(Tab::SysLog).isVisible());
    EXPECT_NE(List(Tab::SysLog).window(), window.get());
    world.Box().Run(Command::ShowSysLog);
    EXPECT_FALSE(List(Tab::SysLog).isVisible());
    const auto* pages = window->findChild<QTabWidget*>();
    EXPECT_FALSE(pages->isTabVisible(static_cast<int>(Tab::SysLog)));
    EXPECT_EQ(pages->tabText(static_cast<int>(Tab::IdCodes)), QLatin1String("ID codes"));
}

}  // namespace
}  // namespace nordkeep
