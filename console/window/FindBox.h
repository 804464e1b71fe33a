#pragma once

#include "console/lists/Captions.h"
#include "console/lists/TableRows.h"
#include "console/lists/WindowView.h"
#include "console/window/Commands.h"
#include "platform/Clock.h"
#include "platform/EventLoop.h"
#include "store/EventStore.h"
#include "translation/Translations.h"

namespace nordkeep {

/// Something that was found by a few letters.
struct FindHit {
    enum class Kind { Command, Alarm, Object };
    Kind kind = Kind::Command;
    Text name{};
    Text detail{};
    Command command = Command::Keys;
    std::int32_t filePointer = 0;
    Text set{};
    Text idCode{};
};

/// Hits on the screen, in the order in which they were found.
class FindRows final : public TableRows {
 public:
    explicit FindRows(const Captions& captions) : captions_(captions) {}
    void Clear();
    void Add(std::vector<FindHit> hits);
    const FindHit* HitOf(TextView key) const;
    std::size_t Count(FindHit::Kind kind) const;

    int ColumnCount() const override { return 3; }
    Text Heading(int column) const override;
    int DefaultWidth(int column) const override { return column == 0 ? 100 : column == 1 ? 300 : 320; }

 protected:
    int SourceCount() const override { return static_cast<int>(hits_.size()); }
    Text SourceCell(int source, int column) const override;
    Text SourceKey(int source) const override { return std::to_string(source); }

 private:
    const Captions& captions_;
    std::vector<FindHit> hits_{};
};

/// What is done with what was found.
class FindTargets {
 public:
    virtual ~FindTargets() = default;
    virtual const CommandState& StateOf(Command command) const = 0;
    virtual void RunFound(Command command) = 0;
    virtual void ShowAlarm(std::int32_t filePointer) = 0;
    virtual void OpenCard(const Text& set, const Text& idCode) = 0;
};

/// One field for everything: commands, open alarms, the objects of all sets. A key costs the same however
/// many there are; the rest is looked through in slices.
class FindBox {
 public:
    /// More hits of a kind than these nobody reads.
    static constexpr std::size_t kMostHits = 100;

    struct Needs {
        const Translations& translations;
        const EventStore& store;
        const Captions& captions;
        const Clock& clock;
        EventLoop& loop;
    };
    FindBox(const Needs& needs, FindTargets& targets);

    void SetView(WindowView* view) { view_ = view ? view : &noView_; }
    const Captions& Words() const { return needs_.captions; }
    FindRows& Rows() { return rows_; }

    void Open();
    void Close();
    /// All words must stand in what is looked for. An empty text finds nothing.
    void SetText(const Text& text);
    const Text& Wanted() const { return text_; }
    bool IsBusy() const { return stage_ != Stage::Done; }
    Text Notice() const;
    /// Does what the row is about, and closes.
    void Activate(TextView key);

 private:
    enum class Stage { Alarms, Objects, Done };

    void FindCommands();
    void FindExactObjects();
    void Slice();
    bool TakeAlarms(std::int64_t endUs, std::vector<FindHit>& hits);
    bool TakeObjects(std::int64_t endUs, std::vector<FindHit>& hits);
    bool HasAllWords(std::initializer_list<const Text*> fields) const;
    FindHit HitOf(const cTranslate& set, const cIDCode& object) const;

    Needs needs_;
    FindTargets& targets_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    FindRows rows_;
    std::unique_ptr<Timer> timer_;
    Text text_{};
    std::vector<Text> words_{};
    Stage stage_ = Stage::Done;
    EventSequence alarm_ = 0;  // looked at last
    std::size_t set_ = 0;      // places to go on from
    std::size_t object_ = 0;
    std::uint64_t generation_ = 0;  // of the sets that these are places in
};

}  // namespace nordkeep
