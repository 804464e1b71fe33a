#pragma once

#include "console/lists/CodeTexts.h"
#include "translation/SetCheck.h"

namespace nordkeep {

/// What the editors ask of the program around them.
class EditorsHost {
 public:
    virtual ~EditorsHost() = default;
    /// The file as it is is kept among the last versions of it. At a client the server does that.
    virtual void KeepVersion(const Text& path) = 0;
    /// A file has been written: what it says is to count, and who changed it is noted.
    virtual void NoteSaved(const Text& path) = 0;
    /// Opens the file as a text.
    virtual void OpenAsText(const Text& path) = 0;
    /// Opens what is known of an object, as a form or as a text. `name` is the object's, for a title.
    virtual void EditInformation(const Text& set, const Text& idCode, const Text& name) = 0;
    /// The instructions of an object for its types and event codes; those that exist are marked.
    virtual std::vector<CodeText> CodeTexts(const Text& set, const Text& idCode) = 0;
    /// What the check of a set has to know beside its files.
    virtual SetSurroundings SurroundingsOf(const Text& set) = 0;
    /// The lines that use a set, for a person.
    virtual Text LinesOf(const Text& set) = 0;
    /// Gives the files and folders of a set another name, and the lines that use it know it. False, with
    /// nothing changed, when that cannot be done here.
    virtual bool RenameSet(const Text& from, const Text& to) = 0;
    /// The bytes of the map that a reference names; empty when there is none.
    virtual Text MapOf(const Text& reference) = 0;
    /// The names of the pictures that can be maps.
    virtual std::vector<Text> Maps() = 0;
};

}  // namespace nordkeep
