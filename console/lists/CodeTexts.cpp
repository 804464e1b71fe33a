#include "console/lists/CodeTexts.h"

#include "console/lists/CodeLists.h"
#include "platform/FileTree.h"
#include "runtime/Fields.h"
#include "runtime/ObjectFiles.h"

#include <unordered_set>

namespace nordkeep {

Text CodeInfoFile(const Text& set, const Text& idCode, const Text& code) {
    return set.empty() ? Text() : TypeInformationFile(set, idCode, code);
}

std::vector<CodeText> TypeTextsOf(const cTranslate& set) {
    std::vector<CodeText> items;
    for (const cTypeCode& type : set.m_TypeCodes) {
        items.push_back({type.m_TypeCode, type.m_TypeCode + " " + type.m_Name});
    }
    return items;
}

std::vector<CodeText> EventTextsOf(DataFiles& files, const Text& set) {
    std::vector<CodeText> items;
    for (const DataCodeEntry& entry : EventCodesOf(files.ReadTextFile(DataCodeFileOf(set)))) {
        items.push_back({entry.code, entry.code + " " + entry.name});
    }
    return items;
}

std::vector<CodeText> MarkedItems(DataFiles& files, const Text& set, const Text& idCode,
                                  std::vector<CodeText> items) {
    if (set.empty() || !IsSafeComponent(idCode)) return items;
    std::unordered_set<Text> known;
    for (const Text& name : files.ScanForFiles("Information\\" + set + "\\" + idCode + "\\*.TXT")) {
        known.insert(UpperCase(TextView(name)));
    }
    for (CodeText& item : items) {
        if (known.contains(UpperCase(TextView(item.code + ".TXT")))) item.caption += " *";
    }
    return items;
}

}  // namespace nordkeep
