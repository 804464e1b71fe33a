#pragma once

#include "platform/Text.h"

#include <unordered_map>
#include <vector>

namespace nordkeep {

/// A settings file line by line, by the rules of IniText, for whoever says where in it something stands.
/// Lines are counted from 1. The views point into the content, which outlives this.
class IniLines {
 public:
    struct Section {
        TextView name{};
        int line = 0;
        int sameNameOn = 0;  // line of an equal section before, which is the one that counts; 0 for none
        TextView behind{};   // what stands behind the "]"
    };
    struct Entry {
        static constexpr std::size_t kNoSection = static_cast<std::size_t>(-1);
        std::size_t section = kNoSection;  // place in Sections()
        int line = 0;
        int sameKeyOn = 0;  // line of an equal key of the section before, which is the one that counts
        TextView key{};
        TextView value{};    // as IniText gives it
        bool isCut = false;  // the value was too long
    };
    struct Stray {
        int line = 0;
        TextView text{};
    };

    explicit IniLines(TextView content);

    const std::vector<Section>& Sections() const { return sections_; }
    const std::vector<Entry>& Entries() const { return entries_; }
    /// Lines that say nothing: neither section nor value, comment or blank.
    const std::vector<Stray>& Strays() const { return strays_; }
    /// The entry that counts; none without one.
    const Entry* Find(TextView section, TextView key) const;
    /// Its value, or the text to take without one.
    TextView ValueOf(TextView section, TextView key, TextView byDefault = {}) const;
    /// Its line; else that of the section, else 0.
    int LineOf(TextView section, TextView key) const;
    /// The section that counts; none without one.
    const Section* FindSection(TextView name) const;
    /// An entry of the section that counts, and the first of its key.
    bool Counts(const Entry& entry) const;
    /// The entries of a section that count, in file order.
    std::vector<const Entry*> EntriesOf(TextView section) const;

 private:
    void TakeLine(TextView line, int number);
    void BeginSection(TextView trimmed, int number);
    void TakeEntry(TextView line, std::size_t equals, int number);

    std::vector<Section> sections_{};
    std::vector<Entry> entries_{};
    std::vector<Stray> strays_{};
    std::unordered_map<Text, std::size_t> bySection_{};  // upper case to the section that counts
    std::unordered_map<Text, std::size_t> byKey_{};      // place of the section, and key in upper case
};

}  // namespace nordkeep
