#include "console/views/boxes/LoginDialog.h"

#include "console/lists/SharedCaptions.h"
#include "platform/qt/QtText.h"

#include <QtGui/QCloseEvent>
#include <QtGui/QInputMethodEvent>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>

namespace nordkeep {
namespace {

constexpr int kTextCaption = 1087;
constexpr int kTextUserName = 1088;
constexpr int kTextPassword = 1089;
constexpr int kTextOk = 1058;
constexpr int kCaptionRefused = 3787;

}  // namespace

LoginDialog::LoginDialog(LoginBox& login, const Captions& captions, QWidget* parent)
    : QDialog(parent), login_(login) {
    const auto text = [&](int number) { return ShownLine(captions.FromFile(number)); };
    setWindowTitle(text(kTextCaption));
    userName_ = new QLineEdit;
    password_ = new QLineEdit;
    // The box holds stars only; what else could be put into it would be taken for the password.
    password_->setReadOnly(true);
    password_->setFocusPolicy(Qt::StrongFocus);
    password_->setContextMenuPolicy(Qt::NoContextMenu);
    password_->setAttribute(Qt::WA_InputMethodEnabled);
    password_->setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText);
    password_->installEventFilter(this);
    userName_->installEventFilter(this);
    ok_ = new QPushButton(text(kTextOk));
    ok_->setAutoDefault(false);
    auto* cancel = new QPushButton(text(kTextCancel));
    cancel->setAutoDefault(false);
    refused_ = NewLabel(CaptionText(captions, kCaptionRefused));
    refused_->setWordWrap(true);
    auto* form = new QFormLayout;
    form->addRow(NewLabel(text(kTextUserName) + u':'), userName_);
    form->addRow(NewLabel(text(kTextPassword) + u':'), password_);
    userName_->setAccessibleName(text(kTextUserName));
    password_->setAccessibleName(text(kTextPassword));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok_);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(refused_);
    layout->addLayout(buttons);
    connect(userName_, &QLineEdit::textEdited, this, [this](const QString& name) {
        login_.TypeUserName(FromQString(name));
        Refresh();
    });
    connect(ok_, &QPushButton::clicked, this, [this] { login_.Ok(); });
    connect(cancel, &QPushButton::clicked, this, [this] { login_.Close(); });
    setMinimumWidth(340);
}

void LoginDialog::Show(OpenedBy by) {
    Refresh();
    const bool isNew = !isVisible();
    // Beside a sheet in which somebody is typing it waits.
    if (isNew) setWindowModality(by == OpenedBy::Operator ? Qt::WindowModal : Qt::NonModal);
    BringToFront(*this, by == OpenedBy::Operator);
    if (isNew || by == OpenedBy::Operator) {
        (login_.UserName().empty() ? userName_ : password_)->setFocus();
    }
}

void LoginDialog::Refresh() {
    const QString name = ShownLine(login_.UserName());
    if (userName_->text() != name) userName_->setText(name);
    password_->setText(ToQString(login_.Stars()));
    ok_->setEnabled(login_.IsOkEnabled());
    refused_->setVisible(login_.IsRefused());
}

bool LoginDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto& key = *static_cast<QKeyEvent*>(event);
        const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
        if (watched == userName_ && isEnter) {
            password_->setFocus();
            return true;
        }
        if (watched == password_ && HandleKey(key)) return true;
    }
    if (watched == password_ && event->type() == QEvent::InputMethod) {
        login_.TypePassword(FromQString(static_cast<QInputMethodEvent*>(event)->commitString()));
        Refresh();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

bool LoginDialog::HandleKey(QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            login_.Ok();
            return true;
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
            login_.Backspace();
            break;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Escape:
            return false;
        default: {
            const bool isCommand = (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) &&
                                   !(event.modifiers() & Qt::GroupSwitchModifier);
            if (isCommand || event.text().isEmpty()) return false;
            login_.TypePassword(FromQString(event.text()));
        }
    }
    Refresh();
    return true;
}

void LoginDialog::closeEvent(QCloseEvent* event) {
    event->ignore();
    login_.Close();
}

}  // namespace nordkeep
