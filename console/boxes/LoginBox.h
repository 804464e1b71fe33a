#pragma once

#include "console/boxes/CentreOperations.h"
#include "console/lists/WindowView.h"

namespace nordkeep {

/// The login of a client's user. The box on the screen holds stars only; the password is collected here key
/// by key, and forgotten as soon as it has been sent.
class LoginBox {
 public:
    explicit LoginBox(ServerContact& server) : server_(server) {}

    void SetView(WindowView& view) { view_ = &view; }

    void Open(OpenedBy by);
    void Close();
    bool IsOpen() const { return isOpen_; }

    void TypeUserName(Text name) { userName_ = std::move(name); }
    /// Takes the printable characters among these; keys without a character leave the password as it is.
    void TypePassword(TextView characters);
    /// Takes back the last character.
    void Backspace();
    const Text& UserName() const { return userName_; }
    /// One star for each character of the password.
    Text Stars() const { return Text(password_.size(), '*'); }
    bool IsOkEnabled() const { return !userName_.empty() && !password_.empty(); }
    void Ok();

 private:
    void Forget();

    ServerContact& server_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    bool isOpen_ = false;
    Text userName_{};
    Text password_{};
};

}  // namespace nordkeep
