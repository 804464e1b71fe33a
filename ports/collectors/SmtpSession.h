#pragma once

#include "platform/Text.h"

#include <optional>

namespace nordkeep {

/// A mail as it was handed over.
struct SmtpMail {
    Text sender{};  // of the envelope; may be empty
    Text content{};
};

/// What a session asks of its line.
struct SmtpStep {
    Text reply{};                    // with its line ends
    std::optional<SmtpMail> mail{};  // complete; the session goes on when it is told what became of it
    bool isOver = false;
};

/// One caller who hands over mails. It takes mail for any address and passes nothing on; it knows lines only.
class SmtpSession {
 public:
    /// What a mail may be long, in bytes.
    static constexpr std::size_t kMostOfMail = 1 << 20;

    /// What the caller is greeted with.
    static Text Greeting(const Text& welcome);
    static Text Farewell(TextView reason);

    /// What a line may be long at this moment.
    std::size_t LongestLine() const { return isTakingData_ ? kMostOfMail : kLongestCommand; }
    /// A line without its end; `isCut` when it was longer than allowed.
    SmtpStep Take(const Text& line, bool isCut);
    /// What became of the mail.
    SmtpStep OnMailHandled(bool isStored);

 private:
    static constexpr std::size_t kLongestCommand = 1000;

    struct Verb {
        TextView name;
        Text (SmtpSession::*answer)(TextView argument);
    };
    static const Verb kVerbs[];

    Text Answer(const Text& line);
    Text Hello(TextView);
    Text ExtendedHello(TextView);
    Text Mail(TextView argument);
    Text Recipient(TextView argument);
    Text Data(TextView);
    Text Reset(TextView);
    Text Nothing(TextView);
    Text Verify(TextView);
    SmtpStep TakeDataLine(const Text& line, bool isCut);
    SmtpStep Counted(Text reply);

    std::optional<SmtpMail> mail_{};  // from MAIL on
    int recipients_ = 0;
    bool isTakingData_ = false;
    bool isTooLarge_ = false;
    int errors_ = 0;
};

}  // namespace nordkeep
