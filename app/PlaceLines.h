#pragma once

#include "app/NetworkPeers.h"
#include "app/ReloadRequest.h"
#include "console/boxes/EditorBox.h"
#include "console/setup/LineControl.h"
#include "platform/ChildProcess.h"
#include "ports/PortList.h"

namespace nordkeep {

/// The ports of this copy, for the dialog that sets them up.
class LocalLines final : public LineControl {
 public:
    struct Needs {
        PortList& ports;
        const FileTree& dataFolder;
        const Settings& files;
        const Clock& clock;
        ReloadRequest& reload;
        EditorHost& host;
        NativePath sendTool{};  // the program that sends test telegrams
    };
    explicit LocalLines(Needs needs) : needs_(std::move(needs)) {}

    std::vector<LineFigures> Lines() const override;
    std::vector<LineAccount> Accounts(const Text& name) const override;
    void FilesChanged(const Text& what) override;
    void Hold(const Text& name, bool isHeld) override;
    bool RemoveFile(const Text& name) override;
    bool StartTest(const Text& name) override;
    std::optional<bool> TakeTestOutcome() override;

 private:
    Needs needs_;
    ChildProcess test_{};
    bool isTesting_ = false;
};

/// A client's lines are its server's, which takes up the files that it is sent, and tells how they do.
class ClientLines final : public LineControl {
 public:
    /// Built behind this; nothing is asked of it before the program runs.
    explicit ClientLines(const NetworkPeers& peers) : peers_(peers) {}

    std::vector<LineFigures> Lines() const override {
        const Mirror::ServerState* server = peers_.ServerState();
        return server ? server->lines : std::vector<LineFigures>();
    }
    void FilesChanged(const Text&) override {}
    void Hold(const Text&, bool) override {}
    bool RemoveFile(const Text&) override { return false; }
    bool StartTest(const Text&) override { return false; }
    std::optional<bool> TakeTestOutcome() override { return std::nullopt; }

 private:
    const NetworkPeers& peers_;
};

}  // namespace nordkeep
