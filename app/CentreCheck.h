#pragma once

#include "platform/FileTree.h"
#include "ports/PortCheck.h"
#include "runtime/Findings.h"
#include "runtime/Role.h"
#include "translation/SetCheck.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>

namespace nordkeep {

/// Looks through everything of a centre that people type: settings, ports, translation sets, users, and the
/// files and folders that these name. It reads and changes nothing, and it works in slices, so that a running
/// copy receives meanwhile however many objects there are.
class CentreCheck {
 public:
    /// Without a role it is that of a copy that is started here with a window.
    CentreCheck(const FileTree& dataFolder, const FileTree& programFolder, const Language& language,
                std::optional<Role> role = std::nullopt);
    CentreCheck(const CentreCheck&) = delete;
    CentreCheck& operator=(const CentreCheck&) = delete;

    /// One slice of some milliseconds. False when all is done.
    bool Continue();
    /// Complete, and in the order of files and lines, once Continue has said so.
    const Findings& Result() const { return findings_; }

 private:
    /// A piece of work; true while there is more of it.
    using Work = std::function<bool()>;
    /// A file that is there and has been read.
    struct Loaded {
        Text content{};
        FileFindings findings;
    };

    bool IsClient() const;
    void CheckMainFile();
    void PlanPorts();
    void CheckPort(const Text& name);
    void PlanSets();
    void PlanSet(const Text& file);
    Work IdCodeWork(const Text& set, Loaded loaded);
    void CheckUsersFile();
    void CheckFolders();
    void PlanZones();
    void CheckObjectInfo();
    void Plan(std::function<void()> step);

    std::optional<Loaded> Load(TextView path);
    FileFindings FindingsOf(const NativePath& path) { return {findings_, Relative(path)}; }
    Text Relative(const NativePath& path) const;
    FileRights RightsOfSetting(TextView path) const { return RightsOf(dataFolder_.ResolveSetting(path)); }
    bool IsSetThere(TextView set) const;
    std::optional<PictureSize> MapSizeOf(TextView file);

    const FileTree& dataFolder_;
    const FileTree& programFolder_;
    std::optional<Role> role_;
    Findings findings_;
    std::deque<Work> works_{};
    Text mainContent_{};
    IniLines main_{mainContent_};
    std::optional<PortSurroundings> around_{};
    std::optional<PortCheck> ports_{};
    std::map<Text, std::optional<PictureSize>> maps_{};
};

}  // namespace nordkeep
