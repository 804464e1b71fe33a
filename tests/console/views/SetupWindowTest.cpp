#include "console/views/setup/FieldRow.h"
#include "tests/console/views/AllWindows.h"

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTableWidget>

#include <gtest/gtest.h>

#include <filesystem>

namespace nordkeep {
namespace {

/// The delivered set-up in front of somebody.
struct SetupWindowWorld : AllWindows {
    explicit SetupWindowWorld(const char* number = "044") : AllWindows(number, "x") {
        folder.Write("Settings\\Nordkeep.INI",
                     "[General]\r\nMaxAlarms=many\r\nColorState_0=777777;FFFFFF\r\n");
        setup.Open();
        setup.ShowPage(setup.Sections().size());  // the first with fields
        QApplication::processEvents();
    }
    int FirstPage() const { return static_cast<int>(setup.Sections().size()); }
    QListWidget* Pages() { return InputOf<QListWidget>(PlainCaption(captions, 3860)); }
    /// What takes the keys for a field, by its caption.
    template <class Input>
    Input* InputOf(const QString& caption) {
        for (Input* input : setupWindow.findChildren<Input*>()) {
            if (input->accessibleName() == caption) return input;
        }
        return nullptr;
    }
    QPushButton* Button(int caption) {
        for (QPushButton* button : setupWindow.findChildren<QPushButton*>()) {
            if (button->text() == CaptionText(captions, caption)) return button;
        }
        return nullptr;
    }
    void Search(const QString& words) {
        InputOf<QLineEdit>(CaptionText(captions, 3861))->setText(words);
        QApplication::processEvents();
    }
};

TEST(SetupWindow, ShowsEveryPageOfTheDeliveredDescriptor) {
    for (const char* number : {"044", "046"}) {
        SetupWindowWorld w(number);
        for (int page = 0; page < w.Pages()->count(); ++page) {
            w.Pages()->setCurrentRow(page);
            QApplication::processEvents();
            EXPECT_EQ(w.setup.CurrentPage(), static_cast<std::size_t>(page));
            for (QLabel* label : w.setupWindow.findChildren<QLabel*>()) {
                EXPECT_FALSE(label->text().contains("Invalid Text")) << label->text().toStdString();
            }
        }
    }
}

TEST(SetupWindow, TypesAppliesAndTellsFaultsWithoutMovingTheRow) {
    SetupWindowWorld w;
    auto* most = w.InputOf<QLineEdit>("Alarms kept at most");
    ASSERT_TRUE(most);
    EXPECT_EQ(most->text(), "many");
    EXPECT_TRUE(most->accessibleDescription().startsWith("! ")) << "also for who only hears it";
    EXPECT_TRUE(w.Pages()->item(w.FirstPage())->text().contains("! 1"));
    most->setText("70");
    most->textEdited("70");
    EXPECT_FALSE(most->accessibleDescription().startsWith("! "));
    EXPECT_TRUE(w.Pages()->item(w.FirstPage())->text().contains("*"));
    w.Button(3863)->click();
    EXPECT_EQ(w.files.ReadIni("General", "MaxAlarms", ""), "70");
    EXPECT_EQ(most, w.InputOf<QLineEdit>("Alarms kept at most")) << "the field stays where it is";
    EXPECT_FALSE(w.Button(3863)->isEnabled());
}

TEST(SetupWindow, ChoicesAndSwitchesWriteTheirValues) {
    SetupWindowWorld w;
    w.Search("AlarmSound");
    auto* sound = w.InputOf<QComboBox>("Sound of an alarm");
    ASSERT_TRUE(sound);
    sound->setCurrentIndex(2);
    sound->activated(2);
    w.Search("AutoViewMap");
    auto* map = w.InputOf<QCheckBox>("The map opens for each new alarm");
    ASSERT_TRUE(map);
    map->click();
    w.setup.Apply();
    EXPECT_EQ(w.files.ReadIni("General", "AlarmSound", ""), "2");
    EXPECT_EQ(w.files.ReadIni("General", "AutoViewMap", ""), "1");
}

TEST(SetupWindow, MakesALineByItsButtonsAndFields) {
    SetupWindowWorld w;
    w.Pages()->setCurrentRow(0);
    EXPECT_EQ(w.setup.Section(), &w.lineBox);
    w.Button(4568)->click();
    QApplication::processEvents();
    auto* kind = w.InputOf<QComboBox>("Kind of line");
    ASSERT_TRUE(kind);
    kind->setCurrentIndex(kind->findData("SMTP"));
    kind->activated(kind->currentIndex());
    QApplication::processEvents();
    auto* format = w.InputOf<QComboBox>("Format of the telegrams");
    ASSERT_TRUE(format);
    EXPECT_NE(format->findData("11"), -1) << "only what mail carries, and what is chosen now";
    EXPECT_EQ(format->findData("4"), -1);
    format->setCurrentIndex(format->findData("11"));
    format->activated(format->currentIndex());
    EXPECT_FALSE(w.Button(3863)->isEnabled()) << "there are more steps";
    w.Button(5194)->click();
    QApplication::processEvents();
    auto* number = w.InputOf<QLineEdit>("Number");
    ASSERT_TRUE(number && number->isVisible());
    EXPECT_TRUE(number->accessibleDescription().startsWith("! "));
    number->setText("17650");
    number->textEdited("17650");
    EXPECT_FALSE(number->accessibleDescription().startsWith("! "));
    w.Button(5194)->click();
    w.Button(5194)->click();
    w.Button(3863)->click();
    EXPECT_EQ(w.files.ReadPortIni("General", "PortNumber", "", "Port1"), "17650");
    EXPECT_EQ(w.files.ReadPortIni("General", "MessageFormat", "", "Port1"), "11");
    auto* table = w.setupWindow.findChild<QTableWidget*>();
    ASSERT_TRUE(table);
    EXPECT_EQ(table->rowCount(), 1);
}

TEST(SetupWindow, OffersThePrintersOfASpoolerThatIsSlow) {
    const TempFolder bin;
    bin.Write("lpstat",
              "#!/bin/sh\n[ \"$1\" = -e ] || exit 1\nwhile [ ! -e \"$0-answers\" ]; do sleep 0.05; done\n"
              "echo Desk\necho Cellar\n");
    std::filesystem::permissions(bin.Path() + "/lpstat", std::filesystem::perms::owner_all);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QByteArray::fromStdString(bin.Path()) + ":" + path);
    SetupWindowWorld w;
    w.Search("AlarmPagePrinter Printer");
    auto* printer = w.InputOf<QComboBox>("Printer");
    ASSERT_TRUE(printer) << "the window stands before there is an answer";
    printer->setCurrentText("Hall");
    bin.Write("lpstat-answers", "");
    EXPECT_TRUE(QTest::qWaitFor([&] { return printer->count() == 3; }, 30'000));
    EXPECT_EQ(printer->itemText(2), "Cellar");
    EXPECT_EQ(printer->currentText(), "Hall") << "what is being typed stays";
    qputenv("PATH", path);
}

TEST(SetupWindow, AColourPairShowsItsContrast) {
    SetupWindowWorld w;
    w.Search("ColorState_0");
    bool isTold = false;
    for (QLabel* label : w.setupWindow.findChildren<QLabel*>()) {
        isTold = isTold || label->text() == ShownLine(w.captions(3877, {"4.4"}));
    }
    EXPECT_TRUE(isTold);
}

TEST(SetupWindow, ColumnsAreMovedAndTakenAway) {
    SetupWindowWorld w;
    w.Search("ListView_Unacked Columns");
    auto* list = w.InputOf<QListWidget>("Columns of the new alarms");
    ASSERT_TRUE(list);
    list->setCurrentRow(0);
    const QString first = list->item(0)->text();
    w.Button(3896)->click();
    EXPECT_EQ(list->item(1)->text(), first);
    list->item(0)->setCheckState(Qt::Unchecked);
    w.setup.Apply();
    const Text columns = w.files.ReadIni("ListView_Unacked", "Columns", "");
    EXPECT_EQ(columns.substr(0, columns.find(',')), Text(first.section('(', 1).chopped(1).toStdString()));
}

}  // namespace
}  // namespace nordkeep
