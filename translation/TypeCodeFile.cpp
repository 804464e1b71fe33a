#include "translation/TypeCodeFile.h"

#include "runtime/Fields.h"
#include "translation/SetRows.h"

namespace nordkeep {

std::vector<cTypeCode> ReadTypeCodeFile(TextView content) {
    std::vector<cTypeCode> types;
    for (const TextView row : SetRows(content)) {
        const auto fields = RowFields<4>(row);
        types.push_back({.m_TypeCode = Text(TrimBlanks(fields[0])),
                         .m_Prio = LeadingInt16(fields[1]),
                         .m_Name = Text(TrimBlanks(fields[2])),
                         .m_ResetTypeCode = Text(TrimBlanks(fields[3]))});
    }
    return types;
}

Text TypeCodeFileName(TextView set) {
    return Text("Settings\\").append(set).append(".TypeCode");
}

}  // namespace nordkeep
