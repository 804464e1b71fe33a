#include "ports/SetUses.h"

#include "platform/Files.h"
#include "ports/PortList.h"
#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr TextView kTranslate = "Translate";

/// A port's list with another name in the place of one.
Text WithOtherName(const Text& sets, TextView from, TextView to) {
    Text renamed;
    for (const Text& name : Split(sets, ',')) {
        const bool isThis = EqualsNoCase(TrimBlanks(name), from);
        renamed.append(renamed.empty() ? "" : ",").append(isThis ? to : TextView(name));
    }
    return renamed;
}

struct Move {
    NativePath from{};
    NativePath to{};
};

/// What there is of a set, and where it goes.
std::vector<Move> MovesOf(const FileTree& folder, const Text& from, const Text& to) {
    std::vector<Move> moves;
    for (const char* ending : {".IDCode", ".TypeCode", ".DataCode"}) {
        const Move move = {folder.Resolve("Settings\\" + from + ending),
                           folder.Resolve("Settings\\" + to + ending)};
        if (StampOf(move.from).Exists()) moves.push_back(move);
    }
    for (const char* parent : {"Information\\", "Comments\\", "Maps\\"}) {
        const Move move = {folder.Resolve(parent + from), folder.Resolve(parent + to)};
        if (FolderExists(move.from)) moves.push_back(move);
    }
    return moves;
}

}  // namespace

std::vector<SetUse> UsesOfSet(const FileTree& dataFolder, const Settings& files, TextView set) {
    std::vector<SetUse> uses;
    for (const Text& port : PortNames(dataFolder)) {
        for (int number = 0; number < kProtocolCount; ++number) {
            const Protocol protocol = ProtocolOf(number);
            const Text sets = files.ReadPortIni(kTranslate, ProtocolKey(protocol), {}, port);
            const auto isThis = [set](const Text& name) { return EqualsNoCase(TrimBlanks(name), set); };
            if (std::ranges::any_of(Split(sets, ','), isThis)) uses.push_back({port, protocol});
        }
    }
    return uses;
}

SetSurroundings SetGround::Of(TextView set) {
    SetSurroundings around;
    around.isZeroTrimmed = IsTrue(files_.ReadMainIni("General", "ZeroTrimObjectId", "0"));
    for (const SetUse& use : UsesOfSet(dataFolder_, files_, set)) around.protocols.push_back(use.protocol);
    around.mapSize = [this](TextView file) { return MapSizeOf(file); };
    return around;
}

std::optional<PictureSize> SetGround::MapSizeOf(TextView file) {
    const bool isAbsolute = file.find(':') != TextView::npos;
    const NativePath path =
        isAbsolute ? dataFolder_.ResolveSetting(file) : dataFolder_.Resolve("Maps\\" + Text(file));
    const FileStamp stamp = StampOf(path);
    auto& known = maps_[Text(file)];
    if (known.first == stamp) return known.second;
    known = {stamp, std::nullopt};
    if (const auto bytes = ReadFile(path)) known.second = SizeOfPicture(*bytes).value_or(PictureSize());
    return known.second;
}

bool MoveSet(const FileTree& dataFolder, Settings& files, const Text& from, const Text& to) {
    std::vector<Move> done;
    for (const Move& move : MovesOf(dataFolder, from, to)) {
        if (RenameFile(move.from, move.to)) {
            done.push_back(move);
            continue;
        }
        for (const Move& back : done) RenameFile(back.to, back.from);
        return false;
    }
    for (const SetUse& use : UsesOfSet(dataFolder, files, from)) {
        const Text sets = files.ReadPortIni(kTranslate, ProtocolKey(use.protocol), {}, use.port);
        files.WriteIni(kTranslate, ProtocolKey(use.protocol), WithOtherName(sets, from, to),
                       "Settings\\" + use.port + ".ini");
    }
    return true;
}

}  // namespace nordkeep
