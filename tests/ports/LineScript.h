#pragma once

#include "ports/LineFormats.h"
#include "runtime/Fields.h"
#include "tests/doubles/TempFolder.h"
#include "tests/ports/Decoding.h"
#include "translation/Translate.h"

#include <map>

namespace nordkeep {

/// One line of a script: a word and what follows it.
struct ScriptLine {
    Text word{};
    Text value{};
};

/// What comes in on a line and what the line makes of it, in order. docs/protocols.md explains the words
/// setting, centre, receive, answer, event, tick, send, note and queue. Tests have some more:
/// - in, out: as receive and answer, but text in which \xNN is a byte;
/// - t1 KIND SEQUENCE CLASS STATUS TEXT, rsm CLASS BITS LINE TEXT: a frame with a right check comes in;
/// - rest, traffic, closes: counts at the end of the script;
/// - caller NUMBER CODE PROTOCOL: an object that takes calls; finish: the program ends.
struct Script {
    Text place{};  // for messages
    MessageFormat format{};
    std::vector<ScriptLine> lines{};

    std::vector<Text> Values(TextView word) const;
    /// All that comes in.
    Text Stream() const;
};

/// The scripts of a page, in fences "```telegram FORMAT".
std::vector<Script> ReadPage(const Text& path);
/// The scripts of a file of cases: "format N" holds for the cases behind it, "case NAME" begins one.
std::vector<Script> ReadCases(const Text& path);

/// Where a script plays: settings, texts and objects.
class ScriptWorld final : public CallerBook {
 public:
    explicit ScriptWorld(const Script& script);
    std::unique_ptr<LineFormat> NewFormat();
    NewDecoder FreshDecoder();
    ExportQueues& Queues() { return queues_; }

    std::optional<KnownCaller> FindCaller(TextView number) const override;

 private:
    MessageFormat format_;
    TempFolder folder_{};
    Settings files_{folder_.Tree()};
    Language language_{};
    ExportQueues queues_{};
    cTranslate set_{};
    std::map<Text, KnownCaller> callers_{};
};

/// The clock of all scripts.
inline const OleDate kScriptNow = OleDate::FromCivil({2025, 11, 21, 6, 5, 4});
inline const OleDate kScriptUtc = OleDate::FromCivil({2025, 11, 21, 5, 5, 4});

/// Plays a script and holds it against what happens.
void Play(const Script& script);

}  // namespace nordkeep
