#pragma once

#include "runtime/Language.h"

#include <initializer_list>
#include <vector>

namespace nordkeep {

enum class Severity { Error, Warning };

/// Something that a person has typed and that does not do what it should.
struct Finding {
    Text file{};   // below the data folder, with "/" between its components
    int line = 0;  // from 1; 0 is the file as a whole
    Severity severity = Severity::Error;
    Text sentence{};
    int field = 0;  // of the row, from 1, where the check tells; 0 is the row as a whole
};

/// What the checks have found. All of it is counted; of very much only the first is kept.
class Findings {
 public:
    static constexpr std::size_t kMostKept = 2000;

    explicit Findings(const Language& language) : language_(language) {}

    /// The sentence is the text of this number, with `parts` for %1, %2 and so on. Parts come from files:
    /// they are cut and freed of what cannot be printed.
    void Add(TextView file, int line, Severity severity, int text, std::initializer_list<TextView> parts);
    /// Adds to the last sentence: is this word meant?
    void SuggestForLast(TextView word);

    /// In the order in which they were found.
    const std::vector<Finding>& All() const { return all_; }
    std::size_t Errors() const { return errors_; }
    std::size_t Warnings() const { return warnings_; }
    std::size_t Count() const { return errors_ + warnings_; }
    /// True when no more is kept, so that no check need work hard for a good sentence.
    bool IsFull() const { return all_.size() >= kMostKept; }
    /// By file and line.
    void Sort();
    /// What is found from now on is about this field of its row; 0 for the row as a whole.
    void AtField(int field) { field_ = field; }
    /// All that is kept, which is not found any more then.
    std::vector<Finding> Take();

 private:
    const Language& language_;
    std::vector<Finding> all_{};
    int field_ = 0;
    std::size_t errors_ = 0;
    std::size_t warnings_ = 0;
};

/// The findings in one file.
class FileFindings {
 public:
    using Parts = std::initializer_list<TextView>;
    /// `path` is below the data folder, with "\" or "/".
    FileFindings(Findings& findings, TextView path);

    void Error(int line, int text, Parts parts = {}) { Add(line, Severity::Error, text, parts); }
    void Warning(int line, int text, Parts parts = {}) { Add(line, Severity::Warning, text, parts); }
    void Add(int line, Severity severity, int text, Parts parts = {}) {
        findings_.Add(path_, line, severity, text, parts);
    }
    /// A word that is none: an error with the word that is meant, when one is near, else a warning, since it
    /// may belong to another program.
    void UnknownWord(int line, int text, Parts parts, TextView nearest);

    void AtField(int field) { findings_.AtField(field); }

    Findings& All() const { return findings_; }
    const Text& Path() const { return path_; }

 private:
    Findings& findings_;
    Text path_;
};

/// The errors of `now` that `before` does not have; the numbers in their sentences do not count, since lines
/// move.
std::vector<Finding> AddedErrors(const std::vector<Finding>& before, const std::vector<Finding>& now);

/// The candidate that a mistyped word means: one or two letters away, in any case. Empty when none is near.
TextView NearestWord(TextView word, const std::vector<TextView>& candidates);

}  // namespace nordkeep
