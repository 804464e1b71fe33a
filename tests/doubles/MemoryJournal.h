#pragma once

#include "platform/JournalFile.h"

#include <algorithm>
#include <vector>

namespace nordkeep {

/// The journal's database without a medium: its rows in a list.
class MemoryJournal final : public JournalFile {
 public:
    bool Open(const NativePath&) override { return isOpen = true; }
    bool IsOpen() const override { return isOpen; }
    void Close() override { isOpen = false; }
    bool Append(std::span<const JournalRow> added, std::span<const JournalMark>) override {
        rows.insert(rows.end(), added.begin(), added.end());
        return true;
    }
    std::int64_t LastId() const override { return rows.empty() ? 0 : rows.back().id; }
    std::int64_t Mark(const char*) const override { return 0; }
    bool Read(std::int64_t after, std::span<const std::string_view> kinds, std::size_t most,
              const std::function<void(const JournalRow&)>& show) override {
        return ShowSome(
            [&](const JournalRow& row) {
                return row.id > after && (kinds.empty() || std::ranges::find(kinds, row.kind) != kinds.end());
            },
            false, most == 0 ? rows.size() : most, show);
    }
    bool ReadStretch(const JournalStretch& stretch,
                     const std::function<void(const JournalRow&)>& show) override {
        const auto place = std::pair(stretch.besideTime, stretch.besideId);
        return ShowSome(
            [&](const JournalRow& row) {
                const auto at = std::pair(row.time, row.id);
                const bool isBeside =
                    stretch.besideTime.empty() || (stretch.isNewestFirst ? at < place : at > place);
                return isBeside && row.time >= stretch.from && (stretch.to.empty() || row.time < stretch.to);
            },
            stretch.isNewestFirst, stretch.most, show);
    }
    bool ReadSubject(const JournalSubject& subject,
                     const std::function<void(const JournalRow&)>& show) override {
        return ShowSome(
            [&](const JournalRow& row) {
                const bool isIt =
                    subject.event.empty() ? row.object == subject.object : row.event == subject.event;
                return isIt && (subject.below == 0 || row.id < subject.below);
            },
            true, subject.most, show);
    }
    std::optional<JournalRow> ReadLast(std::string_view) override { return std::nullopt; }
    std::optional<JournalRow> ReadLastOf(std::string_view, std::string_view) override { return std::nullopt; }
    std::optional<std::size_t> Prune(const Pruning&) override { return 0; }
    bool Tidy(bool) override { return false; }
    const std::string& LastError() const override { return error; }

    bool isOpen = false;
    std::vector<JournalRow> rows{};
    std::string error{};

 private:
    template <class Picks>
    bool ShowSome(Picks picks, bool isNewestFirst, std::size_t most,
                  const std::function<void(const JournalRow&)>& show) const {
        std::vector<JournalRow> picked;
        std::ranges::copy_if(rows, std::back_inserter(picked), picks);
        if (isNewestFirst) std::ranges::reverse(picked);
        for (std::size_t i = 0; i < std::min(most, picked.size()); ++i) show(picked[i]);
        return isOpen;
    }
};

}  // namespace nordkeep
