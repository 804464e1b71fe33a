#pragma once

namespace nordkeep {

struct cTranslate;
struct cIDCode;

/// What the translations tell the console: the object list and the tree of sets.
class ObjectViews {
 public:
    virtual ~ObjectViews() = default;
    /// Shows an object's present state in its row.
    virtual void UpdateObjectTreeEntry(cTranslate& set, cIDCode& object) = 0;
    /// Refreshes the failed states that the tree shows.
    virtual void RecalcAliveTestView() = 0;
    /// The sets are about to be read again, or have been.
    virtual void ClearTree() = 0;
    virtual void RebuildTree() = 0;
};

/// For a copy that shows no objects.
class NoObjectViews final : public ObjectViews {
 public:
    void UpdateObjectTreeEntry(cTranslate&, cIDCode&) override {}
    void RecalcAliveTestView() override {}
    void ClearTree() override {}
    void RebuildTree() override {}
};

}  // namespace nordkeep
