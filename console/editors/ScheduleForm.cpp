#include "console/editors/ScheduleForm.h"

#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {

ScheduleForm FormOfSchedule(TextView schedule) {
    ScheduleForm form;
    const TextView text = TrimBlanks(schedule);
    if (text.empty() || text == "0") return form;
    if (text.find(':') == TextView::npos) {
        form.kind = ScheduleForm::Kind::Minutes;
        form.minutes = text;
        return form;
    }
    form.kind = ScheduleForm::Kind::Times;
    for (const Text& entry : Split(text, ',')) {
        const std::size_t dash = entry.find('-');
        if (dash == Text::npos) {
            form.times.push_back({.begin = {}, .end = Text(TrimBlanks(entry))});
        } else {
            form.times.push_back({.begin = Text(TrimBlanks(entry.substr(0, dash))),
                                  .end = Text(TrimBlanks(entry.substr(dash + 1)))});
        }
    }
    return form;
}

Text ScheduleOf(const ScheduleForm& form) {
    if (form.kind == ScheduleForm::Kind::Never) return {};
    if (form.kind == ScheduleForm::Kind::Minutes) return Text(TrimBlanks(form.minutes));
    std::vector<Text> entries;
    for (const ScheduleForm::Window& window : form.times) {
        const Text end(TrimBlanks(window.end));
        const Text begin(TrimBlanks(window.begin));
        if (!end.empty()) entries.push_back(begin.empty() ? end : begin + "-" + end);
    }
    std::stable_partition(entries.begin(), entries.end(),
                          [](const Text& entry) { return LeadingNumber(entry) > 0; });
    Text schedule;
    for (const Text& entry : entries) schedule.append(schedule.empty() ? "" : ",").append(entry);
    return schedule;
}

}  // namespace nordkeep
