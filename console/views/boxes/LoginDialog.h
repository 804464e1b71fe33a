#pragma once

#include "console/boxes/LoginBox.h"
#include "console/views/lists/ViewParts.h"

class QLineEdit;

namespace nordkeep {

/// The login. The password's box shows stars and never holds the password.
class LoginDialog final : public QDialog, public WindowView {
 public:
    LoginDialog(LoginBox& login, const Captions& captions, QWidget* parent = nullptr);

    void Show(OpenedBy by) override;
    void Refresh() override;
    void Close() override { hide(); }

 protected:
    void reject() override { login_.Close(); }
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    bool HandleKey(QKeyEvent& event);

    LoginBox& login_;
    QLineEdit* userName_ = nullptr;
    QLineEdit* password_ = nullptr;
    QLabel* refused_ = nullptr;
    QPushButton* ok_ = nullptr;
};

}  // namespace nordkeep
