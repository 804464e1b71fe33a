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
    /// Sends the login and closes; what the server answers comes as Answer.
    void Ok();
    /// A refused login opens the box again, which says so; the name stays. Nothing when none was sent.
    void Answer(bool isAccepted);
    bool IsRefused() const { return isRefused_; }
    /// In front of what has opened by itself meanwhile.
    void Raise();

 private:
    void Forget();

    ServerContact& server_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    bool isOpen_ = false;
    Text userName_{};
    Text password_{};
    Text sentName_{};  // of the login that has no answer yet
    bool isRefused_ = false;
};

}  // namespace nordkeep
