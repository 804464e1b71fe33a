#include "console/lists/ObjectList.h"

#include "console/lists/SharedCaptions.h"
#include "runtime/Dates.h"
#include "translation/ObjectLookup.h"
#include "translation/ServicePeriods.h"

#include <unordered_set>

namespace nordkeep {
namespace {

constexpr int kTextFirstHeading = 3210;
constexpr int kTextUnit = 609;
constexpr int kTextFirstMode = 3410;
constexpr int kTextYes = 3422;
constexpr int kTextNo = 3423;
constexpr int kTextServiceUntil = 5104;
constexpr int kTextNoEnd = 5105;

/// Behind the ID code of a second object with the same one; no ID code holds it.
constexpr char kBetweenCodeAndPlace = '\n';

enum Column {
    Name,
    Interval,
    LastEvent,
    Expires,
    Map,
    Customer,
    CallerNeeded,
    ResetCode,
    Interval2,
    Expires2,
    ServiceUntil
};

Text TimeCell(OleDate time) {
    return time.IsNever() ? Text() : FormatDate(time, "YYYY-MM-DD HH:NN:SS");
}

OleDate TimeOf(const cIDCode& object, int column) {
    if (column == LastEvent) return object.m_LastIncomingEvent;
    const int test = column == Expires ? 1 : column == Expires2 ? 2 : 0;
    return object.AliveTestIsToBeUsed(test) ? object.GetNextAliveTestExpirationTime(test) : OleDate();
}

Text NameOf(const cIDCode& object) {
    Text name = object.m_IdCode;
    if (!object.m_Originator.empty()) name.append("/").append(object.m_Originator);
    return name + " " + object.m_ObjectName;
}

Glyph GlyphOf(ObjectState state) {
    switch (state) {
        case ObjectState::InService:
            return Glyph::ObjectInService;
        case ObjectState::Failed:
            return Glyph::ObjectFailed;
        case ObjectState::ServicePlanned:
            return Glyph::ObjectServicePlanned;
        case ObjectState::InUse:
            return Glyph::ObjectInUse;
        case ObjectState::Plain:
            break;
    }
    return Glyph::None;
}

}  // namespace

ObjectState StateOf(const cIDCode& object, OleDate now) {
    if (IsInService(object, now)) return ObjectState::InService;
    if (object.m_AliveTestIntervalHasExceeded || object.m_AliveTest2IntervalHasExceeded) {
        return ObjectState::Failed;
    }
    if (object.m_ServiceMode == static_cast<int>(ServiceMode::LogInPeriod) &&
        object.m_ServicePeriodBegin >= now) {
        return ObjectState::ServicePlanned;
    }
    const bool isSupervised = object.AliveTestIsToBeUsed(1) || object.AliveTestIsToBeUsed(2);
    return isSupervised ? ObjectState::InUse : ObjectState::Plain;
}

Text ServiceWord(const Captions& captions, const cIDCode& object) {
    const int mode = object.m_ServiceMode >= 0 && object.m_ServiceMode <= 3 ? object.m_ServiceMode : 0;
    const Text begin = TimeCell(object.m_ServicePeriodBegin);
    const Text end = TimeCell(object.m_ServicePeriodEnd);
    if (mode == static_cast<int>(ServiceMode::LogUntilEnd)) return captions(kTextFirstMode + mode, {end});
    return captions(kTextFirstMode + mode, {begin, end});
}

void ObjectList::ShowSet(const Text& set) {
    Renew([&] {
        set_ = set;
        codes_.clear();
        const cTranslate* found = set_.empty() ? nullptr : needs_.translations.Find(set_);
        if (!found) return;
        std::unordered_set<Text> known;
        for (const auto& object : found->m_IdCodes) {
            Text key = object->m_IdCode;
            if (!known.insert(key).second) key += kBetweenCodeAndPlace + std::to_string(codes_.size());
            codes_.push_back({object->m_IdCode, std::move(key)});
        }
    });
}

void ObjectList::NoteObject(TextView set, TextView idCode) {
    if (EqualsNoCase(set, set_)) Mark(idCode);
}

cIDCode* ObjectList::ObjectAt(int source) const {
    const cTranslate* set = source < 0 || set_.empty() ? nullptr : needs_.translations.Find(set_);
    if (!set) return nullptr;
    const auto place = static_cast<std::size_t>(source);
    const Text& code = codes_[place].idCode;
    if (place < set->m_IdCodes.size() && set->m_IdCodes[place]->m_IdCode == code) {
        return set->m_IdCodes[place].get();
    }
    return FindExactObject(*set, code);
}

cIDCode* ObjectList::ObjectOfRow(TextView key) const {
    const int row = RowOf(key);
    return row < 0 ? nullptr : ObjectAt(SourceOf(row));
}

Text ObjectList::Heading(int column) const {
    if (column == ServiceUntil) return needs_.captions(kTextServiceUntil);
    return column >= 0 && column < ColumnCount() ? needs_.captions(kTextFirstHeading + column) : Text();
}

Text ObjectList::SourceCell(int source, int column) const {
    const cIDCode* object = ObjectAt(source);
    return object ? CellOf(*object, column) : Text();
}

Text ObjectList::CellOf(const cIDCode& object, int column) const {
    switch (column) {
        case Name:
            return NameOf(object);
        case Interval:
        case Interval2: {
            const int test = column == Interval ? 1 : 2;
            const bool isUsed = object.AliveTestIsToBeUsed(test);
            return isUsed ? object.ReadableAliveTestIntervalOrTime(test, needs_.captions.FromFile(kTextUnit))
                          : Text();
        }
        case LastEvent:
        case Expires:
        case Expires2:
            return TimeCell(TimeOf(object, column));
        case Map:
            return object.m_MapName;
        case Customer:
            return object.m_Customer;
        case CallerNeeded:
            return needs_.knowsCallers
                       ? needs_.captions(object.m_MatchCLIDToAcceptMessage ? kTextYes : kTextNo)
                       : Text();
        case ResetCode:
            return object.m_ResetIdCode;
        case ServiceUntil:
            if (!IsInService(object, needs_.clock.Now())) return {};
            return object.m_ServiceMode == static_cast<int>(ServiceMode::LogOnly)
                       ? needs_.captions(kTextNoEnd)
                       : TimeCell(object.m_ServicePeriodEnd);
        default:
            return {};
    }
}

Text ObjectList::SourceSortKey(int source, int column) const {
    const bool isTime = column == LastEvent || column == Expires || column == Expires2;
    const cIDCode* object = isTime ? ObjectAt(source) : nullptr;
    return object ? CompactTime(TimeOf(*object, column)) : CollationKey(SourceCell(source, column));
}

Glyph ObjectList::Icon(int row) const {
    const cIDCode* object = ObjectAt(SourceOf(row));
    return object ? GlyphOf(StateOf(*object, needs_.clock.Now())) : Glyph::None;
}

Text ObjectList::IconWord(int row) const {
    const cIDCode* object = ObjectAt(SourceOf(row));
    if (!object) return {};
    if (StateOf(*object, needs_.clock.Now()) != ObjectState::Failed) {
        return ServiceWord(needs_.captions, *object);
    }
    return needs_.captions(object->m_AliveTestIntervalHasExceeded ? kCaptionTestFailed : kCaptionTest2Failed);
}

Text ObjectList::ToolTip(int row, int column) const {
    return column <= 0 ? IconWord(row) : Text();
}

}  // namespace nordkeep
