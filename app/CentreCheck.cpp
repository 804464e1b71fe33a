#include "app/CentreCheck.h"

#include "app/MainFileCheck.h"
#include "app/settings/KnownSettings.h"
#include "console/boxes/SheetAids.h"
#include "console/setup/LineKinds.h"
#include "network/UsersCheck.h"
#include "network/messages/ObjectMessages.h"
#include "ports/PortList.h"
#include "runtime/Fields.h"
#include "translation/IdCodeFile.h"
#include "translation/ObjectForm.h"
#include "translation/TypeCodeFile.h"

#include <algorithm>
#include <array>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextUnreadable = 3807;
constexpr int kTextNoFolder = 3844;
constexpr int kTextOthersRead = 3846;
constexpr int kTextNotWritable = 3848;

constexpr TextView kMainFile = "Settings\\Nordkeep.INI";
constexpr TextView kUsersFile = "Settings\\Users.INI";
constexpr TextView kZoneFolders = "Information\\SIA";

constexpr std::array<TextView, 8> kFolders = {"Settings",   "Data",        "Data\\Events", "LogFiles",
                                              "AlarmFiles", "Information", "Comments",     "Maps"};

}  // namespace

CentreCheck::CentreCheck(const FileTree& dataFolder, const FileTree& programFolder, const Language& language,
                         std::optional<Role> role)
    : dataFolder_(dataFolder), programFolder_(programFolder), role_(role), findings_(language) {
    Plan([this] { CheckMainFile(); });
}

void CentreCheck::Plan(std::function<void()> step) {
    works_.push_back([step = std::move(step)] {
        step();
        return false;
    });
}

bool CentreCheck::Continue() {
    if (works_.empty()) return false;
    // A step may plan others.
    Work work = std::move(works_.front());
    works_.pop_front();
    if (work()) works_.push_front(std::move(work));
    if (works_.empty()) findings_.Sort();
    return !works_.empty();
}

Text CentreCheck::Relative(const NativePath& path) const {
    const NativePath& root = dataFolder_.Root();
    const std::size_t begin = root.ends_with('/') ? root.size() : root.size() + 1;
    return FromUtf8(path.starts_with(root) && path.size() > begin ? path.substr(begin) : path);
}

std::optional<CentreCheck::Loaded> CentreCheck::Load(TextView path) {
    const NativePath place = dataFolder_.Resolve(path);
    FileFindings findings = FindingsOf(place);
    FileContent content = LoadFile(place);
    if (content.state == FileContent::State::Unreadable) findings.Error(0, kTextUnreadable, {content.reason});
    if (content.state != FileContent::State::Read) return std::nullopt;
    return Loaded{std::move(content.bytes), std::move(findings)};
}

void CentreCheck::CheckMainFile() {
    if (auto loaded = Load(kMainFile)) {
        mainContent_ = std::move(loaded->content);
        main_ = IniLines(mainContent_);
        if (CheckContent(mainContent_, loaded->findings))
            MainFileCheck(main_, dataFolder_, programFolder_, loaded->findings).Run();
        if (!RightsOf(dataFolder_.Resolve(kMainFile)).mayWrite)
            loaded->findings.Error(0, kTextNotWritable, {loaded->findings.Path()});
    }
    Plan([this] { CheckFolders(); });
    if (IsClient()) return;
    Plan([this] { PlanPorts(); });
    Plan([this] { CheckUsersFile(); });
    Plan([this] { CheckObjectInfo(); });
    Plan([this] { PlanZones(); });
}

// A copy whose operators work on a server's alarms: it has neither ports nor sets nor users of its own.
bool CentreCheck::IsClient() const {
    if (role_) return *role_ == Role::Client;
    const auto isSet = [&](TextView key) { return !TrimBlanks(main_.ValueOf("NetWork", key)).empty(); };
    return isSet("ServerAddress") && !isSet("ClientAddresses");
}

void CentreCheck::PlanPorts() {
    around_.emplace(PortSurroundings{.known = KnownSettings(),
                                     .main = main_,
                                     .addresses = InterfaceAddresses(),
                                     .rightsOf = [this](TextView path) { return RightsOfSetting(path); },
                                     .isSetThere = [this](TextView set) { return IsSetThere(set); },
                                     .readsKey = &LineReadsKey});
    ports_.emplace(*around_);
    for (const Text& name : PortNames(dataFolder_)) Plan([this, name] { CheckPort(name); });
    Plan([this] { PlanSets(); });
}

void CentreCheck::CheckPort(const Text& name) {
    if (auto loaded = Load("Settings\\" + name + ".ini"))
        ports_->Check(name, loaded->content, loaded->findings);
}

bool CentreCheck::IsSetThere(TextView set) const {
    return StampOf(dataFolder_.Resolve(IdCodeFileName(set))).Exists();
}

void CentreCheck::PlanSets() {
    for (const Text& file : ListFiles(dataFolder_.Resolve("Settings"))) PlanSet(file);
}

void CentreCheck::PlanSet(const Text& file) {
    const std::size_t dot = file.rfind('.');
    const Text ending = dot == Text::npos ? Text() : file.substr(dot);
    const Text path = "Settings\\" + file;
    if (EqualsNoCase(ending, ".IDCode")) {
        Plan([this, path, set = file.substr(0, dot)] {
            if (auto loaded = Load(path)) works_.push_front(IdCodeWork(set, *std::move(loaded)));
        });
    } else if (EqualsNoCase(ending, ".TypeCode")) {
        Plan([this, path] {
            if (auto loaded = Load(path)) CheckTypeCodes(loaded->content, loaded->findings);
        });
    } else if (EqualsNoCase(ending, ".DataCode")) {
        Plan([this, path] {
            if (auto loaded = Load(path)) CheckDataCodes(loaded->content, loaded->findings);
        });
    }
}

CentreCheck::Work CentreCheck::IdCodeWork(const Text& set, Loaded loaded) {
    struct Running {
        Text content;
        std::optional<IdCodeCheck> check{};
    };
    auto running = std::make_shared<Running>(Running{std::move(loaded.content)});
    SetSurroundings around{.isZeroTrimmed = IsTrue(main_.ValueOf("General", "ZeroTrimObjectId", "0")),
                           .mapSize = [this](TextView file) { return MapSizeOf(file); }};
    if (!TrimBlanks(main_.ValueOf("NetWork", "ClientAddresses")).empty())
        around.mostAtClients = kMostCarriedRecords;
    const auto uses = ports_->Sets().find(UpperCase(set));
    if (uses != ports_->Sets().end()) around.protocols = uses->second;
    running->check.emplace(running->content, std::move(around), std::move(loaded.findings));
    return [running] { return running->check->Continue(); };
}

std::optional<PictureSize> CentreCheck::MapSizeOf(TextView file) {
    const auto [known, isNew] = maps_.try_emplace(Text(file));
    if (!isNew) return known->second;
    const bool isAbsolute = file.find(':') != TextView::npos;
    const auto bytes =
        ReadFile(isAbsolute ? dataFolder_.ResolveSetting(file) : dataFolder_.Resolve("Maps\\" + Text(file)));
    if (bytes) known->second = SizeOfPicture(*bytes).value_or(PictureSize());
    return known->second;
}

void CentreCheck::CheckUsersFile() {
    const NativePath place = dataFolder_.Resolve(kUsersFile);
    if (auto loaded = Load(kUsersFile)) {
        CheckUsers(loaded->content, loaded->findings);
        if (RightsOf(place).mayOthersRead) loaded->findings.Warning(0, kTextOthersRead);
        return;
    }
    // Clients that nobody can log in at only watch.
    const int line = main_.LineOf("NetWork", "ClientAddresses");
    const bool isServer = !TrimBlanks(main_.ValueOf("NetWork", "ClientAddresses")).empty();
    if (isServer && !RightsOf(place).isThere)
        FindingsOf(dataFolder_.Resolve(kMainFile))
            .Warning(line, kTextFileMissing, {"ClientAddresses", "Settings/Users.INI"});
}

void CentreCheck::CheckObjectInfo() {
    if (auto loaded = Load(kObjectFormFile); loaded && CheckContent(loaded->content, loaded->findings))
        CheckObjectForm(loaded->content, loaded->findings);
    if (auto loaded = Load(kPhrasesFile); loaded && !loaded->content.empty())
        CheckContent(loaded->content, loaded->findings);
}

// Each object may have a file of its own, and there may be many of them: a slice for each.
void CentreCheck::PlanZones() {
    for (const Text& object : ListEntries(dataFolder_.Resolve(kZoneFolders))) {
        Plan([this, object] {
            if (auto loaded = Load(Text(kZoneFolders).append("\\").append(object).append("\\Zones.SIA")))
                CheckZones(loaded->content, loaded->findings);
        });
    }
}

void CentreCheck::CheckFolders() {
    for (const TextView folder : kFolders) {
        const NativePath place = dataFolder_.Resolve(folder);
        const FileRights rights = RightsOf(place);
        FileFindings findings = FindingsOf(place);
        if (!rights.isThere) continue;
        if (!rights.isFolder) {
            findings.Error(0, kTextNoFolder, {findings.Path()});
        } else if (!rights.mayWrite) {
            findings.Error(0, kTextNotWritable, {findings.Path()});
        }
    }
    if (!RightsOf(dataFolder_.Root()).mayWrite)
        FileFindings(findings_, ".").Error(0, kTextNotWritable, {FromUtf8(dataFolder_.Root())});
}

}  // namespace nordkeep
