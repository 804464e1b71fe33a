#include "translation/Translations.h"

#include "runtime/Fields.h"
#include "translation/IdCodeFile.h"
#include "translation/LastEvents.h"
#include "translation/SetLoader.h"
#include "translation/SetRows.h"
#include "translation/TypeCodeFile.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr int kNotObtainedText = 1094;

bool Holds(const std::vector<cTranslate*>& sets, TextView name) {
    return std::ranges::any_of(sets,
                               [name](const cTranslate* set) { return EqualsNoCase(set->m_FileName, name); });
}

bool HasChanged(const NativePath& path, OleDate readTime) {
    if (readTime.IsNever() || FileTime(path) == readTime) return false;
    return ReadFile(path).has_value();
}

}  // namespace

cTranslate* Translations::Find(TextView name) const {
    const auto found =
        std::ranges::find_if(sets_, [name](const auto& set) { return EqualsNoCase(set->m_FileName, name); });
    return found == sets_.end() ? nullptr : found->get();
}

cTranslate* Translations::FindOrReloadTranslation(TextView name, bool loadLastEvents) {
    cTranslate* set = Find(name);
    if (set == nullptr) {
        if (!IsSetName(name)) return nullptr;
        set = sets_.emplace_back(std::make_unique<cTranslate>()).get();
        set->m_IsToBeDeleted = true;
        set->m_FileName = name;
    }
    if (!set->m_IsToBeDeleted) return set;
    SetLoader(needs_, *set).Load(loadLastEvents);
    set->m_IsToBeDeleted = false;
    ++generation_;
    return set;
}

void Translations::ReLoadPortTranslations(PortBinding& port, bool loadLastEvents) {
    for (int number = 0; number < kProtocolCount; ++number) {
        const TextView key = ProtocolKey(ProtocolOf(number));
        std::vector<cTranslate*>& sets = port.SetsOf(ProtocolOf(number));
        sets.clear();
        const Text names = needs_.files.ReadPortIni("Translate", key, {}, port.portName);
        port.protocolNames[static_cast<std::size_t>(number)] = names.empty() ? TextView() : key;
        for (const Text& piece : Split(names, ',')) {
            const TextView name = TrimBlanks(piece);
            if (name.empty()) break;
            if (Holds(sets, name)) continue;
            if (cTranslate* set = FindOrReloadTranslation(name, loadLastEvents)) {
                sets.push_back(set);
            } else {
                needs_.log.WriteSysLog(needs_.language.GetLanguageText(kNotObtainedText), LogKind::Failure);
            }
        }
    }
}

void Translations::ReloadAllTranslations(bool loadLastEvents, std::span<PortBinding* const> ports) {
    needs_.views.ClearTree();
    MarkAll();
    for (PortBinding* port : ports) ReLoadPortTranslations(*port, loadLastEvents);
    RemoveMarked();
    needs_.views.RebuildTree();
    needs_.views.RecalcAliveTestView();
}

void Translations::MarkAll() {
    for (auto& set : sets_) {
        set->m_IsToBeDeleted = true;
        for (auto& object : set->m_IdCodes) object->m_IsToBeDeleted = true;
    }
}

void Translations::RemoveMarked() {
    ++generation_;
    std::erase_if(sets_, [](const auto& set) { return set->m_IsToBeDeleted; });
    for (auto& set : sets_) {
        const auto removed =
            std::erase_if(set->m_IdCodes, [](const auto& object) { return object->m_IsToBeDeleted; });
        if (removed > 0) set->index.Rebuild(*set);
    }
}

void Translations::DeleteLastEvents() const {
    for (const auto& set : sets_) RemoveFile(needs_.dataFolder.Resolve(LastEventsFileName(set->m_FileName)));
    for (const Text& name : ListFiles(needs_.dataFolder.Resolve(kLastEventsFolder))) {
        if (!MatchesMask(name, kLastEventsMask)) continue;
        RemoveFile(needs_.dataFolder.Resolve(Text(kLastEventsFolder) + "\\" + name));
    }
}

cTranslate* Translations::GetNextTranslation(const PortBinding* port, Protocol protocol,
                                             const cTranslate* current) {
    if (port == nullptr) return current == nullptr ? &null_ : nullptr;
    if (!IsKnown(protocol)) return nullptr;
    const std::vector<cTranslate*>& sets = port->SetsOf(protocol);
    auto next = sets.begin();
    if (current != nullptr) {
        next = std::find(sets.begin(), sets.end(), current);
        if (next != sets.end()) ++next;
    }
    return next == sets.end() ? nullptr : *next;
}

bool Translations::HaveFilesChanged() const {
    return std::ranges::any_of(sets_, [this](const auto& set) {
        const FileTree& folder = needs_.dataFolder;
        return HasChanged(folder.Resolve(IdCodeFileName(set->m_FileName)), set->m_FileTimeStampIDCode) ||
               HasChanged(folder.Resolve(TypeCodeFileName(set->m_FileName)), set->m_FileTimeStampTypeCode);
    });
}

bool Translations::SaveLastEvents() const {
    bool isSaved = true;
    for (const auto& set : sets_) {
        const NativePath path = needs_.dataFolder.Resolve(LastEventsFileName(set->m_FileName));
        isSaved = ReplaceFile(path, WriteLastEvents(*set)) && isSaved;
    }
    return isSaved;
}

cTranslate& Translations::Add(std::unique_ptr<cTranslate> set) {
    ++generation_;
    set->index.Rebuild(*set);
    return *sets_.emplace_back(std::move(set));
}

void Translations::Clear() {
    ++generation_;
    sets_.clear();
}

}  // namespace nordkeep
