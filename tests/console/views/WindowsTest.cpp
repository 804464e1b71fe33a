#include "console/views/boxes/QtDialogs.h"
#include "tests/console/views/AllWindows.h"
#include "tests/console/views/SpokenNames.h"

#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtGui/QKeyEvent>
#include <QtGui/QShortcut>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStackedWidget>

#include <gtest/gtest.h>

#include <map>

namespace nordkeep {
namespace {

void Press(QWidget& widget, int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&widget, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QApplication::sendEvent(&widget, &release);
}

void PressShortcut(QWidget& window, const QKeySequence& keys) {
    for (QShortcut* shortcut : window.findChildren<QShortcut*>()) {
        if (shortcut->key() != keys) continue;
        QMetaObject::invokeMethod(shortcut, "activated");
        return;
    }
    FAIL() << "no shortcut " << keys.toString().toStdString();
}

/// The texts of a language file that the other one does not have, without mnemonics.
QStringList OwnTexts(const char* number, const char* other) {
    Language own;
    Language strange;
    own.LoadFrom(LanguageFile(number));
    strange.LoadFrom(LanguageFile(other));
    QStringList strangeTexts;
    for (int i = 0; i < 4000; ++i) strangeTexts << ShownLine(strange.GetLanguageText(i)).remove(u'&');
    QStringList texts;
    for (int i = 0; i < 4000; ++i) {
        const QString text = ShownLine(own.GetLanguageText(i)).remove(u'&');
        if (own.Has(i) && !strangeTexts.contains(text)) texts << text;
    }
    return texts;
}

TEST(Windows, SayEverythingInTheirLanguageAndInFull) {
    for (const auto& [number, other] : {std::pair{"044", "046"}, {"046", "044"}}) {
        AllWindows w(number);
        const QStringList foreign = OwnTexts(other, number);
        int checked = 0;
        for (QWidget* window : w.Open()) {
            for (QLabel* label : window->findChildren<QLabel*>()) {
                EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().left(40).toStdString();
                EXPECT_FALSE(label->text().contains("Invalid Text")) << label->text().toStdString();
                EXPECT_FALSE(foreign.contains(label->text())) << label->text().toStdString();
                const bool isTooNarrow =
                    label->isVisible() && !label->wordWrap() && label->width() < label->sizeHint().width();
                EXPECT_FALSE(isTooNarrow) << number << label->text().left(40).toStdString();
                ++checked;
            }
            for (QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
                if (button->text().isEmpty()) continue;
                EXPECT_FALSE(button->text().contains("Invalid Text")) << button->text().toStdString();
                EXPECT_FALSE(foreign.contains(QString(button->text()).remove(u'&')))
                    << button->text().toStdString();
                const bool isTooNarrow = button->isVisible() && button->width() < button->sizeHint().width();
                EXPECT_FALSE(isTooNarrow) << number << button->text().toStdString();
                ++checked;
            }
            EXPECT_LE(window->width(), 1200) << window->windowTitle().left(20).toStdString();
        }
        EXPECT_GT(checked, 40);
    }
}

// Who does not see the window hears each control by a name, and who has no mouse comes to each button.
TEST(Windows, EveryControlHasANameAndIsReachedByKeys) {
    for (const char* number : {"044", "046"}) {
        AllWindows w(number);
        int checked = 0;
        for (QWidget* window : w.Open()) {
            for (QWidget* control : ControlsOf(*window)) {
                EXPECT_FALSE(NameOfControl(*control).trimmed().isEmpty())
                    << number << " " << control->metaObject()->className() << " of "
                    << window->windowTitle().left(40).toStdString() << " in "
                    << control->parentWidget()->metaObject()->className();
                ++checked;
            }
            for (const QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
                const bool isOwn = !button->text().isEmpty() && !button->inherits("QToolButton");
                EXPECT_TRUE(!isOwn || button->focusPolicy() & Qt::TabFocus) << button->text().toStdString();
            }
        }
        EXPECT_GT(checked, 60);
    }
}

/// The page of a window that shows one of several; none for what is always there.
const QWidget* PageOf(const QWidget* widget) {
    for (const QWidget* at = widget; at; at = at->parentWidget()) {
        if (qobject_cast<const QStackedWidget*>(at->parentWidget())) return at;
    }
    return nullptr;
}

TEST(Windows, ButtonsThatStandTogetherHaveMnemonicsOfTheirOwn) {
    for (const char* number : {"044", "046"}) {
        AllWindows w(number);
        for (QWidget* window : w.Open()) {
            std::map<const QWidget*, QString> used;
            for (QPushButton* button : window->findChildren<QPushButton*>()) {
                const qsizetype at = button->text().indexOf(u'&');
                if (at < 0 || at + 1 >= button->text().size()) continue;
                const QChar letter = button->text()[at + 1].toUpper();
                const QWidget* const page = PageOf(button);
                for (const auto& [other, letters] : used) {
                    if (other && page && other != page) continue;  // one of them is shown at a time
                    EXPECT_FALSE(letters.contains(letter)) << number << " " << button->text().toStdString();
                }
                used[page] += letter;
            }
        }
    }
}

struct SheetWindowWorld : AllWindows {
    SheetWindowWorld() : AllWindows("046") {
        sheet.OpenAlarm(alarm->m_FilePointer, OpenedBy::Operator);
        for (QPlainTextEdit* box : sheetWindow.findChildren<QPlainTextEdit*>()) {
            if (!box->isReadOnly()) typing = box;
        }
    }
    QPlainTextEdit* typing = nullptr;
};

TEST(CommentWindow, TypingLosesNoKeyWhileTheAlarmChanges) {
    SheetWindowWorld w;
    Text expected;
    for (int i = 0; i < 1000; ++i) {
        const char letter = static_cast<char>('a' + i % 26);
        Press(*w.typing, Qt::Key_A, QChar::fromLatin1(letter));
        expected += letter;
        w.alarm->m_SmallComment = std::to_string(i);
        w.alarm->m_Status = i % 2;
        w.store->UpdateAlarmLists(*w.alarm);
        w.sheet.Tick();
    }
    EXPECT_EQ(w.sheet.NewComments(), expected);
    EXPECT_EQ(w.typing->textCursor().position(), 1000);
    Press(*w.typing, Qt::Key_Return);
    Press(*w.typing, Qt::Key_Odiaeresis, QString(QChar(0xF6)));
    EXPECT_EQ(w.sheet.NewComments(), expected + "\r\n\xF6");
}

TEST(CommentWindow, ClosesByItsRules) {
    SheetWindowWorld w;
    Press(*w.typing, Qt::Key_A, "a");
    Press(w.sheetWindow, Qt::Key_Escape);
    EXPECT_TRUE(w.sheetWindow.isVisible()) << "Esc drops nothing that has been typed";
    PressShortcut(w.sheetWindow, Qt::CTRL | Qt::Key_S);
    EXPECT_FALSE(w.sheetWindow.isVisible());
    EXPECT_TRUE(w.Comments().ends_with("a\r\n"));
    w.sheet.OpenAlarm(w.alarm->m_FilePointer, OpenedBy::Operator);
    EXPECT_EQ(w.typing->toPlainText(), "");
    Press(*w.typing, Qt::Key_B, "b");
    w.sheetWindow.close();
    EXPECT_FALSE(w.sheet.IsOpen()) << "the cross drops it";
    w.sheet.OpenAlarm(w.alarm->m_FilePointer, OpenedBy::Operator);
    w.dialogs.answers = {true};
    PressShortcut(w.sheetWindow, Qt::CTRL | Qt::Key_Return);
    EXPECT_EQ(w.alarm->m_Status, kStatusAcknowledged);
    EXPECT_FALSE(w.sheetWindow.isVisible());
    w.sheet.OpenAlarm(w.alarm->m_FilePointer, OpenedBy::Itself);
    EXPECT_TRUE(w.sheetWindow.testAttribute(Qt::WA_ShowWithoutActivating));
    Press(w.sheetWindow, Qt::Key_Escape);
    EXPECT_FALSE(w.sheet.IsOpen());
}

TEST(CommentWindow, LookingAtATextThatIsOddChangesNothing) {
    SheetWindowWorld w;
    w.sheetWindow.Refresh();
    EXPECT_FALSE(w.sheet.HasTyped());
    const Text before = w.Comments();
    w.sheet.Save();
    EXPECT_EQ(w.Comments(), before);
}

TEST(LoginDialog, HoldsStarsOnly) {
    RecordingServer server;
    Language language;
    const Captions captions(language);
    LoginBox login(server);
    LoginDialog dialog(login, captions);
    login.SetView(dialog);
    login.Open(OpenedBy::Operator);
    const QList<QLineEdit*> boxes = dialog.findChildren<QLineEdit*>();
    ASSERT_EQ(boxes.size(), 2);
    for (const QChar letter : QStringLiteral("anna")) Press(*boxes[0], Qt::Key_A, letter);
    Press(*boxes[0], Qt::Key_Return, "\r");
    EXPECT_TRUE(login.IsOpen()) << "Enter goes on to the password";
    QApplication::clipboard()->setText("pasted");
    Press(*boxes[1], Qt::Key_S, "s");
    Press(*boxes[1], Qt::Key_V, QString(QChar(0x16)), Qt::ControlModifier);
    Press(*boxes[1], Qt::Key_Shift, {}, Qt::ShiftModifier);
    Press(*boxes[1], Qt::Key_Left);
    Press(*boxes[1], Qt::Key_X, "x");
    Press(*boxes[1], Qt::Key_Delete, QString(QChar(0x7F)));
    Press(*boxes[1], Qt::Key_Aring, QString(QChar(0xE5)));
    EXPECT_EQ(boxes[1]->text(), "**");
    Press(*boxes[1], Qt::Key_Return, "\r");
    EXPECT_EQ(server.calls, "anna/s\xE5");
    EXPECT_FALSE(dialog.isVisible());
}

TEST(MapWindow, CrossStandsOnItsPlaceAndFlashes) {
    AllWindows w("046");
    w.folder.Write("Maps\\big.png", PngOf(400, 300));
    w.mapBox.Open("big.png/200/100", 0, OpenedBy::Operator);
    const auto colorAt = [&](int x, int y) {
        QWidget* canvas = nullptr;
        for (QWidget* widget : w.mapWindow.findChildren<QWidget*>()) {
            if (widget->hasMouseTracking() &&
                widget->size() == QSize(400 * w.mapBox.Zoom() / 100, 300 * w.mapBox.Zoom() / 100))
                canvas = widget;
        }
        return canvas ? canvas->grab().toImage().pixelColor(x, y) : QColor();
    };
    EXPECT_EQ(colorAt(200, 100), QColor(255, 0, 0));
    EXPECT_EQ(colorAt(235, 100), QColor(255, 0, 0));
    EXPECT_EQ(colorAt(250, 100), QColor(Qt::blue));
    w.time.Advance(500);
    EXPECT_EQ(colorAt(200, 100), QColor(Qt::white));
    Press(w.mapWindow, Qt::Key_Plus, "+");
    EXPECT_EQ(colorAt(240, 120), QColor(Qt::white));
    Press(w.mapWindow, Qt::Key_Escape);
    EXPECT_FALSE(w.mapBox.IsOpen());
    w.folder.Write("Maps\\junk.png", "no picture at all");
    w.mapBox.Open("junk.png/1/1", 0, OpenedBy::Operator);
    EXPECT_TRUE(w.mapWindow.isVisible());
    EXPECT_EQ(colorAt(1, 1), QColor());
}

/// Looks at the question that is up, and answers it with a key.
struct Asked {
    QString defaultButton{};
    bool isYes = false;
};
Asked AskAndPress(QtDialogs& dialogs, Answer byDefault, int key) {
    Asked asked;
    QTimer::singleShot(0, [&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (!window->isVisible() || !qobject_cast<QDialog*>(window)) continue;
            for (QPushButton* button : window->findChildren<QPushButton*>()) {
                if (button->isDefault()) asked.defaultButton = QString(button->text()).remove(u'&');
            }
            EXPECT_FALSE(dialogs.AskYesNo("second")) << "one question at a time";
            return Press(*window, key);
        }
    });
    asked.isYes = dialogs.AskYesNo("<b>really</b>?", byDefault);
    EXPECT_FALSE(dialogs.IsQuestionUp());
    return asked;
}

TEST(QtDialogs, EnterGivesTheDefaultAndEscapeIsNo) {
    Language language;
    const Captions captions(language);
    QtDialogs dialogs;
    dialogs.UseCaptions(captions);
    const struct {
        Answer byDefault;
        int key;
        const char* button;
        bool isYes;
    } rows[] = {{Answer::No, Qt::Key_Return, "Nej", false},
                {Answer::Yes, Qt::Key_Return, "Ja", true},
                {Answer::Yes, Qt::Key_Escape, "Ja", false}};
    for (const auto& row : rows) {
        const Asked asked = AskAndPress(dialogs, row.byDefault, row.key);
        EXPECT_EQ(asked.defaultButton, row.button);
        EXPECT_EQ(asked.isYes, row.isYes);
    }
}

TEST(QtDialogs, EverythingElseGoesOnWhileAQuestionIsUp) {
    QtDialogs dialogs;
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (++ticks == 20) dialogs.CloseQuestion();
    });
    timer.start(1);
    EXPECT_FALSE(dialogs.AskYesNo("?", Answer::Yes));
    EXPECT_EQ(ticks, 20);
}

TEST(QtDialogs, QuestionGoesWithItsWindow) {
    QtDialogs dialogs;
    auto* parent = new QWidget;
    parent->show();
    dialogs.UseParent([&] { return parent; });
    QTimer::singleShot(5, [&] { delete parent; });
    EXPECT_FALSE(dialogs.AskYesNo("?", Answer::Yes));
}

}  // namespace
}  // namespace nordkeep
