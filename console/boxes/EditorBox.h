#pragma once

#include "console/lists/Captions.h"
#include "console/lists/OperatorState.h"
#include "console/lists/SharedText.h"
#include "console/lists/TextCheck.h"
#include "console/lists/WindowView.h"
#include "platform/ChildProcess.h"
#include "platform/Dialogs.h"
#include "platform/FileTree.h"

#include <memory>
#include <utility>

namespace nordkeep {

/// What an editor works on.
struct EditedFile {
    Text path{};     // as for DataFiles
    Text title{};    // what the operator calls it
    Text program{};  // that edits it; empty, or not on this machine: the built-in editor
    int line = 0;    // where to begin, from 1; 0: at the front, or where it was left
};

/// What an editor finds around it. A client's files are not on its machine, and its server sees a written
/// file by itself.
class EditorHost {
 public:
    virtual ~EditorHost() = default;
    /// Starts the program of a file; false when the file is left to the built-in editor.
    virtual bool StartProgram(const EditedFile& edited) = 0;
    /// A file has been written.
    virtual void NoteSaved(const Text& path) = 0;
};

/// On a copy whose files are on this machine: starts programs.
class EditorPrograms {
 public:
    explicit EditorPrograms(const FileTree& dataFolder) : dataFolder_(dataFolder) {}
    /// False when the file names none, or it is not on this machine.
    bool Start(const EditedFile& edited);

 private:
    const FileTree& dataFolder_;
    std::vector<std::unique_ptr<ChildProcess>> running_{};
};

/// The built-in editor of plain texts: object information, type instructions, translation files. There is
/// one; what somebody else wrote meanwhile is never overwritten unasked.
class EditorBox {
 public:
    struct Needs {
        DataFiles& files;
        Dialogs& dialogs;
        const Captions& captions;
        const OperatorState& state;
        EditorHost& host;
        TextCheck& check;
    };
    explicit EditorBox(const Needs& needs) : needs_(needs), file_(needs.files) {}

    void SetView(WindowView& view) { view_ = &view; }

    /// False when the file is left to an editor of this window.
    bool StartProgram(const EditedFile& edited) { return needs_.host.StartProgram(edited); }
    /// Starts the program of the file, or opens it here. An unsaved text is asked for first.
    void Open(const EditedFile& edited);
    /// Asks first when the text has not been saved.
    void Close();
    bool IsOpen() const { return isOpen_; }

    const Text& Title() const { return title_; }
    const WindowNotice& Notice() const { return notice_; }
    const Text& Typed() const { return typed_; }
    /// Where the text is to be entered, from 1; 0: anywhere. It is asked for once.
    int TakeLine() { return std::exchange(line_, 0); }
    /// Changes when another text is to be shown than what was typed.
    unsigned Generation() const { return generation_; }
    void Type(Text text);
    bool IsChanged() const { return WithoutLastLineEnds(typed_) != file_.Content(); }
    /// What is wrong with the text, as far as it has been looked at.
    const std::vector<Finding>& Faults() const { return findings_; }
    /// Looks at what has been typed; to be called shortly behind it, and again while it says true.
    bool CheckOn();
    bool MaySave() const { return MayEdit() && !isBusy_ && !file_.IsUnreadable(); }
    void Save();

 private:
    /// The right, and a server that hears of it.
    bool MayEdit() const;
    bool MayDropText();
    bool MayAddFaults();
    void CheckAll();

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    SharedText file_;
    bool isOpen_ = false;
    bool isBusy_ = false;
    Text title_{};
    WindowNotice notice_{};
    Text typed_{};
    int line_ = 0;
    std::vector<Finding> findings_{};
    std::vector<Finding> findingsOfFile_{};
    bool isCheckDue_ = false;
    bool isChecking_ = false;
    unsigned generation_ = 0;
};

}  // namespace nordkeep
