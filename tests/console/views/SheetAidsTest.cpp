#include "console/views/editors/ObjectFormWindow.h"
#include "platform/qt/QtText.h"
#include "tests/console/views/AllWindows.h"

#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTableWidget>

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

struct AidsWorld : LanguageWorld {
    AidsWorld() : LanguageWorld("044") {
        rights.level = 2;
        settings.ViewDynamicFormInAlarmComment = true;
        folder.Write(kObjectFormFile,
                     "Group;\"Contacts\"\r\nField;Who;text;\"Contact\"\r\nField;WhoPhone;phone;\"Number\"\r\n"
                     "Field;Plan;lines;\"Plan\"\r\n");
        folder.Write(kFile, "Key under the mat\r\nWho=Anna\r\nWhoPhone=070-123 45 67\r\nPlan=[ ] Call\r\n");
        sheet.SetView(sheetWindow);
        form.SetView(formWindow);
    }
    static constexpr const char* kFile = "Information\\A\\B\\1.TXT";

    CommentWindow sheetWindow{sheet, captions};
    RecordingEditorsHost host{};
    ObjectFormBox form{{.files = dataFiles,
                        .dialogs = dialogs,
                        .captions = captions,
                        .state = *this,
                        .host = host,
                        .forms = forms}};
    ObjectFormWindow formWindow{form, captions};
};

TEST(ObjectFormWindow, IsFilledInAndKeepsTheRestInSight) {
    AidsWorld w;
    w.form.Open("A/B", "1", "Shop");
    QApplication::processEvents();
    EXPECT_TRUE(w.formWindow.windowTitle().contains("Shop (1)"));
    const auto lines = w.formWindow.findChildren<QLineEdit*>();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0]->text(), "Anna");
    lines[0]->clear();
    QTest::keyClicks(lines[0], "Bo");
    const auto boxes = w.formWindow.findChildren<QPlainTextEdit*>();
    ASSERT_EQ(boxes.size(), 2);
    EXPECT_EQ(boxes[1]->toPlainText(), "Key under the mat");
    boxes[0]->setPlainText("[ ] Call\nWait");
    w.form.Save();
    EXPECT_EQ(w.folder.Read(AidsWorld::kFile),
              "Key under the mat\r\nWho=Bo\r\nWhoPhone=070-123 45 67\r\nPlan=[ ] Call\r\nPlan=Wait\r\n");
    w.formWindow.close();
    EXPECT_FALSE(w.form.IsOpen());
}

TEST(CommentWindow, TicksStepsAndCopiesNumbersByKey) {
    AidsWorld w;
    w.sheet.OpenAlarm(w.Raise().m_FilePointer, OpenedBy::Operator);
    QApplication::processEvents();
    QListWidget* steps = nullptr;
    for (QListWidget* list : w.sheetWindow.findChildren<QListWidget*>()) {
        if (list->count() == 1 && list->item(0)->text() == "Call") steps = list;
    }
    ASSERT_TRUE(steps && steps->isVisible());
    steps->setCurrentRow(0);
    QTest::keyClick(steps, Qt::Key_Space);
    EXPECT_TRUE(w.sheet.NewComments().ends_with("[x] Call\r\n"));
    QTest::keyClick(steps, Qt::Key_Space);
    EXPECT_EQ(w.sheet.NewComments(), "");

    auto* table = w.sheetWindow.findChild<InformationTable*>();
    ASSERT_TRUE(table && table->isVisible());
    EXPECT_EQ(table->rowCount(), 4);
    table->setCurrentCell(1, 1);
    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "070-123 45 67");
    EXPECT_FALSE(OpenLink("file:///etc/passwd")) << "only what a value can lead to";
}

TEST(CommentWindow, FitsBesideAList) {
    AidsWorld w;
    w.sheet.OpenAlarm(w.Raise().m_FilePointer, OpenedBy::Operator);
    w.sheetWindow.SetNarrow(true);
    QApplication::processEvents();
    EXPECT_LE(w.sheetWindow.minimumSizeHint().width(), 520);
    EXPECT_LE(w.sheetWindow.minimumSizeHint().height(), 960) << "a screen of 1280 x 1024";
}

}  // namespace
}  // namespace nordkeep
