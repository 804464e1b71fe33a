#pragma once

#include "console/lists/Captions.h"
#include "console/lists/TailRows.h"
#include "platform/Clock.h"
#include "platform/FileTree.h"
#include "runtime/SysLog.h"
#include "runtime/TrafficLog.h"

namespace nordkeep {

/// The lines of the watched ports.
class DebugList final : public TailRows<Text> {
 public:
    void AddLine(Text line) { Add(std::move(line)); }
    int ColumnCount() const override { return 1; }
    Text Heading(int) const override { return {}; }
    Text Cell(int row, int column) const override;
    Text ToolTip(int row, int column) const override { return Cell(row, column); }
};

/// A port as the debug page knows it.
struct DebugPort {
    Text name{};         // Port1
    Text description{};  // as its traffic is written
    bool isWatched = false;
};

/// The lines that the debug page sends on.
class DebugLines {
 public:
    virtual ~DebugLines() = default;
    virtual void SendOnPort(const Text& portName, TextView bytes) = 0;
};

/// The debug page: watches the bytes of ports, sends to a port, and mutes one port while somebody tries
/// something on its line. Muting is off at every start and ends by itself.
class DebugPage {
 public:
    struct Needs {
        const FileTree& dataFolder;
        const Clock& clock;
        const Captions& captions;
        SysLog& log;
        DebugLines& lines;
    };
    explicit DebugPage(const Needs& needs) : needs_(needs) {}

    DebugList& List() { return list_; }
    void SetPorts(std::vector<DebugPort> ports);
    const std::vector<DebugPort>& Ports() const { return ports_; }
    /// Check_Debug_Port
    void Watch(std::size_t port, bool isWatched);
    /// Combo_Debug_Ports; -1 for none. Another port ends the muting of the one before.
    void Choose(int port);
    int Chosen() const { return chosen_; }
    /// Check_Debug_IgnoreResponse
    void IgnoreResponse(bool isOn);
    bool IsIgnoringResponse() const { return isIgnoring_; }
    /// Check_Debug_HexCode
    void SetHex(bool isHex) { isHex_ = isHex; }
    bool IsHex() const { return isHex_; }
    /// Check_Debug_ShowLastRow
    void SetShowLastRow(bool isOn) { showsLastRow_ = isOn; }
    bool ShowsLastRow() const { return showsLastRow_; }

    /// Command_Debug_Send: the text with "<STX>" and "<13>" as control characters, to the chosen port. Mutes
    /// on for ten more seconds.
    void Send(TextView message);
    /// Command_Debug_Save: Data\Debug.TXT. False when it could not be written.
    bool Save() const;
    /// Command_Debug_Clear
    void Clear() { list_.Clear(); }

    /// To be told of the bytes of every port, named by its description.
    void NoteTraffic(TextView bytes, TrafficDirection direction, TextView port);
    /// To be called on each tick of the display's timer, beside that of the window.
    void Tick(int elapsedMs);
    /// The name of the port whose bytes are shown but not decoded; empty for none.
    Text MutedPort() const;
    /// Seconds until the muting ends.
    int MutedSeconds() const;

 private:
    void EndMuting();
    void LogMuting(int text) const;

    Needs needs_;
    DebugList list_{};
    std::vector<DebugPort> ports_{};
    int chosen_ = -1;
    bool isHex_ = false;
    bool showsLastRow_ = false;
    bool isIgnoring_ = false;
    int sinceSendMs_ = 0;     // left of the time behind a message
    int sinceTickingMs_ = 0;  // left of the time behind the ticking of the box
};

}  // namespace nordkeep
