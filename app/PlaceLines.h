#pragma once

#include "app/CentreConditions.h"
#include "app/NetworkPeers.h"
#include "app/ReloadRequest.h"
#include "console/boxes/EditorBox.h"
#include "console/lists/Captions.h"
#include "console/setup/LineControl.h"
#include "platform/ChildProcess.h"
#include "platform/EventLoop.h"
#include "ports/PortList.h"
#include "runtime/SysLog.h"

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
        EventLoop& loop;
        SysLog& log;
        const Language& language;
        const CentreConditions& centre;
        NativePath sendTool{};  // the program that sends test telegrams
    };
    explicit LocalLines(Needs needs);

    std::vector<LineFigures> Lines() const override;
    std::vector<LineAccount> Accounts(const Text& name) const override;
    std::vector<OutputState> Outputs() const override { return needs_.centre.Outputs(); }
    void FilesChanged(const Text& what) override;
    void Hold(const Text& name, bool isHeld) override;
    void Mute(const Text& name, bool isMuted) override;
    Text MutedPort() const override { return muted_; }
    std::vector<Text> SerialDevices() const override;
    std::vector<Text> Addresses() const override;
    bool RemoveFile(const Text& name) override;
    bool StartTest(const Text& name) override;
    std::optional<bool> TakeTestOutcome() override;

 private:
    void EndMuting();
    void LogMuting(int caption) const;

    Needs needs_;
    Captions captions_;
    Text muted_{};
    std::unique_ptr<Timer> untilHeard_;
    ChildProcess test_{};
    bool isTesting_ = false;
};

/// A client's lines are its server's, which takes up the files that it is sent, and tells how they do.
class ClientLines final : public LineControl {
 public:
    /// `peers` are built behind this; nothing is asked of them before the program runs.
    ClientLines(const NetworkPeers& peers, RemoteAccounts& accounts, const CentreConditions& centre)
        : peers_(peers), accounts_(accounts), centre_(centre) {}

    std::vector<LineFigures> Lines() const override {
        const Mirror::ServerState* server = peers_.ServerState();
        return server ? server->lines : std::vector<LineFigures>();
    }
    std::vector<LineAccount> Accounts(const Text& name) const override { return accounts_.Of(name); }
    std::vector<OutputState> Outputs() const override { return centre_.Outputs(); }
    void FilesChanged(const Text&) override {}
    void Hold(const Text&, bool) override {}
    void Mute(const Text&, bool) override {}
    bool RemoveFile(const Text&) override { return false; }
    bool StartTest(const Text&) override { return false; }
    std::optional<bool> TakeTestOutcome() override { return std::nullopt; }

 private:
    const NetworkPeers& peers_;
    RemoteAccounts& accounts_;
    const CentreConditions& centre_;
};

}  // namespace nordkeep
