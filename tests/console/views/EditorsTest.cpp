#include "console/views/editors/PlaceDialog.h"
#include "tests/console/views/AllWindows.h"

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTableWidget>

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

/// The set-up with a set of two objects in front of somebody.
struct EditorsWorld : AllWindows {
    explicit EditorsWorld(const char* number = "044") : AllWindows(number, "x") {
        folder.Write(
            "Settings\\Town.IDCode",
            "FORMAT=1,6,0,0,7,2\r\n100001;Bakery;60;Plan.png/10/20;;;;1;0;;;\r\n100002;Pump;;;;;;1;0;;;\r\n");
        editorsHost.map = PngOf(200, 100);
        setup.OpenAt(objectRows);
        QApplication::processEvents();
    }
    ~EditorsWorld() { setup.Drop(); }
    /// On the page that is shown.
    template <class Widget>
    Widget* Find(const QString& name) {
        for (Widget* widget : setupWindow.findChildren<Widget*>()) {
            if (widget->isVisible() && widget->accessibleName() == name) return widget;
        }
        return nullptr;
    }
    QPushButton* Button(int caption) {
        for (QPushButton* button : setupWindow.findChildren<QPushButton*>()) {
            if (button->isVisible() && button->text() == CaptionText(captions, caption)) return button;
        }
        return nullptr;
    }
    ListPane* Table() {
        for (ListPane* table : setupWindow.findChildren<ListPane*>()) {
            if (table->isVisible()) return table;
        }
        return nullptr;
    }
    void Type(QLineEdit* line, const QString& text) {
        line->selectAll();
        QTest::keyClicks(line, text);
        QApplication::processEvents();
    }
};

TEST(EditorWindows, AnObjectIsChangedByKeysAndSaved) {
    EditorsWorld w;
    ASSERT_TRUE(w.Table());
    w.Table()->setFocus();
    QTest::keyClick(w.Table(), Qt::Key_Down);
    auto* name = w.Find<QLineEdit>("Name");
    ASSERT_TRUE(name);
    EXPECT_EQ(name->text(), "Pump");
    w.Type(name, "Pumps");
    EXPECT_EQ(w.objectRows.Table().Cell(1, 1), "Pumps");
    auto* code = w.Find<QLineEdit>("ID code");
    w.Type(code, "100001");
    EXPECT_TRUE(code->accessibleDescription().startsWith("! "));
    w.Type(code, "100007");
    EXPECT_FALSE(code->accessibleDescription().startsWith("! "));
    w.Button(3863)->click();
    EXPECT_NE(w.folder.Read("Settings\\Town.IDCode").find("100007;Pumps;"), Text::npos);
    EXPECT_FALSE(w.Button(3863)->isEnabled());
}

TEST(EditorWindows, RowsComeAndGoByKeys) {
    EditorsWorld w;
    w.Table()->setFocus();
    QTest::keyClick(w.Table(), Qt::Key_Insert);
    EXPECT_EQ(w.objectRows.Table().RowCount(), 3);
    EXPECT_EQ(w.Table()->CurrentKey(), w.objectRows.Current());
    w.Table()->setFocus();
    QTest::keyClick(w.Table(), Qt::Key_Delete);
    EXPECT_EQ(w.objectRows.Table().RowCount(), 2);
    QTest::keyClick(w.Table(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(w.Table(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(w.objectRows.Table().RowCount(), 2);
    EXPECT_FALSE(w.objectRows.IsChanged());
    w.Type(w.Find<QLineEdit>(CaptionText(w.captions, 4707)), "pump");
    EXPECT_EQ(w.objectRows.Table().RowCount(), 1);
}

TEST(EditorWindows, TimesOfDayAreFilledInInATable) {
    EditorsWorld w;
    auto* kind = w.Find<QComboBox>("Alive test 1");
    ASSERT_TRUE(kind);
    EXPECT_EQ(kind->currentIndex(), 1);
    kind->setCurrentIndex(2);
    kind->activated(2);
    auto* times = w.Find<QTableWidget>("at times of day");
    ASSERT_TRUE(times);
    times->item(0, 1)->setText("08:00:00");
    QApplication::processEvents();
    ASSERT_EQ(times->rowCount(), 2) << "a row to spare";
    times->item(1, 0)->setText("16:00:00");
    times->item(1, 1)->setText("18:00:00");
    EXPECT_EQ(w.objectRows.Fields()[kObjectSchedule].typed, "08:00:00,16:00:00-18:00:00");
    EXPECT_EQ(w.objectRows.Fields()[kObjectSchedule].fault, "");
    w.objectRows.Undo();
    QApplication::processEvents();
    EXPECT_EQ(kind->currentIndex(), 1) << "the undone value is shown";
}

TEST(EditorWindows, APlaceIsClickedOrMovedOnTheMap) {
    EditorsWorld w;
    ASSERT_TRUE(w.Button(4823));
    w.Button(4823)->click();
    auto* dialog = w.setupWindow.findChild<QDialog*>();
    ASSERT_TRUE(dialog && dialog->isVisible());
    QTest::keyClick(dialog, Qt::Key_Right);
    QTest::keyClick(dialog, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(dialog, Qt::Key_Return);
    EXPECT_EQ(w.objectRows.Fields()[kObjectMap].typed, "Plan.png/11/30");
    EXPECT_EQ(w.Find<QLineEdit>("Map")->text(), "Plan.png/11/30");
}

TEST(EditorWindows, ATelegramIsTriedAndCut) {
    EditorsWorld w;
    w.setup.OpenAt(w.sets);
    QApplication::processEvents();
    for (QLineEdit* line : w.setupWindow.findChildren<QLineEdit*>()) {
        if (!line->isVisible() || line->accessibleName() != PlainCaption(w.captions, 4918)) continue;
        w.Type(line, "10000101");
    }
    EXPECT_EQ(w.sets.Sample(), "10000101");
    EXPECT_EQ(w.sets.Outcome(), "Town gets 10000101");
}

TEST(EditorWindows, EveryPageFitsInBothLanguages) {
    for (const char* number : {"044", "046"}) {
        EditorsWorld w(number);
        for (const SetupSection* section : w.setup.Sections()) {
            w.setup.OpenAt(*section);
            QApplication::processEvents();
            EXPECT_LE(w.setupWindow.width(), 1280) << number;
            for (QLabel* label : w.setupWindow.findChildren<QLabel*>())
                EXPECT_FALSE(label->text().contains("Invalid Text")) << label->text().toStdString();
        }
    }
}

}  // namespace
}  // namespace nordkeep
