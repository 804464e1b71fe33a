#include "console/boxes/LoginBox.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr std::size_t kLongestPassword = 128;  // what the server reads of a user's line

bool IsPrintable(char character) {
    const auto code = static_cast<unsigned char>(character);
    return code >= 32 && code != 127;
}

}  // namespace

void LoginBox::Open(OpenedBy by) {
    if (!isOpen_) {
        Forget();
        isRefused_ = false;
    }
    isOpen_ = true;
    view_->Show(by);
}

void LoginBox::Close() {
    if (!isOpen_) return;
    isOpen_ = false;
    Forget();
    view_->Close();
}

void LoginBox::TypePassword(TextView characters) {
    for (const char character : characters) {
        if (IsPrintable(character) && password_.size() < kLongestPassword) password_ += character;
    }
}

void LoginBox::Backspace() {
    if (password_.empty()) return;
    password_.back() = '\0';
    password_.pop_back();
}

void LoginBox::Ok() {
    if (!isOpen_ || !IsOkEnabled()) return;
    sentName_ = userName_;
    server_.Login(userName_, password_);
    Close();
}

void LoginBox::Answer(bool isAccepted) {
    const Text name = std::exchange(sentName_, {});
    if (name.empty()) return;
    if (isAccepted) return Close();
    Forget();
    userName_ = name;
    isRefused_ = isOpen_ = true;
    view_->Show(OpenedBy::Operator);
}

void LoginBox::Raise() {
    if (isOpen_) view_->Show(OpenedBy::Itself);
}

void LoginBox::Forget() {
    std::ranges::fill(password_, '\0');
    password_.clear();
    userName_.clear();
}

}  // namespace nordkeep
