#pragma once

#include "runtime/IniCheck.h"
#include "runtime/PictureSize.h"
#include "runtime/Protocol.h"
#include "translation/Translate.h"

#include <unordered_map>

namespace nordkeep {

/// What a check of a translation set has to know beside its files.
struct SetSurroundings {
    bool isZeroTrimmed = false;         // unless the set says otherwise
    std::vector<Protocol> protocols{};  // under which ports name the set
    std::size_t mostAtClients = 0;      // objects of a set that clients are told of; 0: there are none
    /// Of the file that a map reference names; none when it is not there, 0 x 0 when it cannot be told.
    std::function<std::optional<PictureSize>(TextView file)> mapSize{};
};

/// Checks an .IDCode file in slices, since it may have a million rows. The content outlives this.
class IdCodeCheck {
 public:
    IdCodeCheck(TextView content, SetSurroundings around, FileFindings findings);

    /// Some thousand rows. False when all is done.
    bool Continue();
    /// One row as it might be in its line, once all is done; it has no line end.
    void CheckAgain(TextView row, int line);

 private:
    /// The rows that say something, one by one, with the numbers of their lines.
    struct Rows {
        TextView rest{};
        int line = 0;
        bool Next(TextView& row);
    };

    /// What is looked for in one walk through the rows: each needs to know all that is before it.
    enum class Pass { Directives, Codes, Fields, Over };

    void TakeRow(TextView row, int line);
    void TakeDirective(TextView row, int line);
    void NoteCode(TextView row, int line);
    void BeginNextPass();
    void TakeDirectives();
    void CheckCount();
    void CheckRow(TextView row, int line);
    void CheckCode(TextView code, int line);
    void CheckLength(TextView code, int line);
    void CheckCaller(TextView field, int line);
    void CheckSchedule(int test, TextView schedule, int line);
    void CheckMap(TextView reference, int line);
    void CheckExport(TextView code, TextView protocol, int line);
    void CheckFlag(int field, TextView value, int line);
    void CheckReset(TextView code, int line);
    Text KeyOf(TextView code) const;
    bool IsTrimmed() const;

    TextView content_;
    SetSurroundings around_;
    FileFindings findings_;
    Rows rows_{};
    Pass pass_ = Pass::Directives;
    Text directives_{};
    std::unordered_map<Text, int> directiveLines_{};
    std::size_t objects_ = 0;
    int firstUntoldLine_ = 0;  // the first object that clients are not told of
    TelegramFormat format_{};
    std::optional<int> zeroTrim_{};
    std::unordered_map<Text, int> codes_{};  // of objects, to the first line of each
};

/// Checks the content of a .TypeCode file.
void CheckTypeCodes(TextView content, FileFindings& findings);
/// Checks the content of a file Zones.SIA of an object.
void CheckZones(TextView content, FileFindings& findings);
/// Checks the content of a .DataCode file.
void CheckDataCodes(TextView content, FileFindings& findings);

}  // namespace nordkeep
