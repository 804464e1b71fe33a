#include "status/Metrics.h"

#include "status/EntryJson.h"

#include <cstdio>

namespace nordkeep {
namespace {

std::string Escaped(std::string_view value) {
    std::string escaped;
    for (const char c : value) {
        if (c == '\n') {
            escaped += "\\n";
            continue;
        }
        if (c == '\\' || c == '"') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

std::string Label(std::string_view name, std::string_view value) {
    return std::string(name) + "=\"" + Escaped(value) + "\"";
}

std::string NumberText(double number) {
    char text[40];
    std::snprintf(text, sizeof text, "%.15g", number);
    return text;
}

/// Builds the text: a head for each figure, then its lines.
class Writer {
 public:
    void Head(const char* name, const char* type, const char* help) {
        name_ = name;
        text_.append("# HELP ").append(name_).append(" ").append(help).append("\n");
        text_.append("# TYPE ").append(name_).append(" ").append(type).append("\n");
    }
    void Line(const std::string& labels, double value, std::string_view suffix = {}) {
        text_.append(name_).append(suffix);
        if (!labels.empty()) text_.append("{").append(labels).append("}");
        text_.append(" ").append(NumberText(value)).append("\n");
    }
    void One(const char* name, const char* type, const char* help, double value) {
        Head(name, type, help);
        Line({}, value);
    }
    std::string Take() { return std::move(text_); }

 private:
    std::string text_{};
    std::string name_{};
};

double Seconds(std::int64_t us) {
    return static_cast<double>(us) / 1e6;
}

void Write(Writer& to, const char* name, const char* help, const Histogram& times) {
    to.Head(name, "histogram", help);
    std::uint64_t count = 0;
    for (std::size_t i = 0; i < Histogram::kBoundsUs.size(); ++i) {
        count += times.CountIn(i);
        to.Line(Label("le", NumberText(Seconds(Histogram::kBoundsUs[i]))), static_cast<double>(count),
                "_bucket");
    }
    count += times.CountIn(Histogram::kBoundsUs.size());
    to.Line(Label("le", "+Inf"), static_cast<double>(count), "_bucket");
    to.Line({}, Seconds(times.SumUs()), "_sum");
    to.Line({}, static_cast<double>(count), "_count");
}

double Age(OleDate since, OleDate now) {
    return since.IsNever()
               ? 0
               : std::max(0.0, static_cast<double>(now.Milliseconds() - since.Milliseconds()) / 1e3);
}

void WriteLines(Writer& to, const StatusFacts& facts, OleDate now) {
    const auto each = [&](const auto& value) {
        for (const LineStatus& line : facts.lines) value(Label("port", ToUtf8(line.name)), line);
    };
    to.Head("nordkeep_telegrams_total", "counter", "Telegrams received since the start.");
    each([&](const auto& port, const auto& line) { to.Line(port, static_cast<double>(line.telegrams)); });
    to.Head("nordkeep_events_total", "counter", "Events that telegrams brought since the start.");
    each([&](const auto& port, const auto& line) { to.Line(port, static_cast<double>(line.events)); });
    to.Head("nordkeep_refused_total", "counter", "Telegrams refused or thrown away since the start.");
    each([&](const auto& port, const auto& line) {
        for (const auto& [reason, count] : line.refused)
            to.Line(port + "," + Label("reason", reason), static_cast<double>(count));
    });
    to.Head("nordkeep_port_open", "gauge", "1 while the port can receive.");
    each([&](const auto& port, const auto& line) { to.Line(port, line.isOpen ? 1 : 0); });
    to.Head("nordkeep_port_last_traffic_seconds", "gauge",
            "Seconds since something was received; not there when nothing was.");
    each([&](const auto& port, const auto& line) {
        if (!line.lastTraffic.IsNever()) to.Line(port, Age(line.lastTraffic, now));
    });
}

void WriteOutputs(Writer& to, const StatusFacts& facts) {
    to.Head("nordkeep_output_up", "gauge", "1 while the output reaches its peer.");
    for (const OutputState& output : facts.outputs)
        to.Line(Label("output", output.name), output.isUp ? 1 : 0);
    to.Head("nordkeep_output_waiting", "gauge", "What the output has still to deliver.");
    for (const OutputState& output : facts.outputs)
        to.Line(Label("output", output.name), static_cast<double>(output.waiting));
}

}  // namespace

std::string MetricsText(const StatusFacts& facts, const std::map<int, std::size_t>& alarmsByStatus,
                        const CommitTimes& times, OleDate now) {
    Writer to;
    to.Head("nordkeep_build_info", "gauge", "The version of the program, as a label.");
    to.Line(Label("version", NORDKEEP_VERSION), 1);
    WriteLines(to, facts, now);
    to.Head("nordkeep_alarms", "gauge", "Alarms in the lists by their state.");
    std::map<std::string, std::size_t> byName;  // a file can hold any number
    for (int status = kStatusNew; status <= kStatusAcknowledged; ++status) byName[StatusName(status)] = 0;
    for (const auto& [status, count] : alarmsByStatus) byName[StatusName(status)] += count;
    for (const auto& [name, count] : byName) to.Line(Label("state", name), static_cast<double>(count));
    to.One("nordkeep_oldest_unhandled_seconds", "gauge", "How long the oldest untouched alarm has waited.",
           Age(facts.oldestUnhandled, now));
    Write(to, "nordkeep_ack_seconds", "From the intake of a telegram until its acknowledgement may go.",
          times.acknowledgements);
    Write(to, "nordkeep_commit_seconds", "A turn's way to the medium.", times.commits);
    to.One("nordkeep_loop_stall_seconds_max", "gauge", "The longest standstill of the loop since the start.",
           static_cast<double>(facts.longestStallMs) / 1e3);
    to.One("nordkeep_clients", "gauge", "Workstations that are connected.",
           static_cast<double>(facts.clients));
    to.One("nordkeep_store_errors_total", "counter", "Writes of events that failed since the start.",
           static_cast<double>(facts.storeErrors));
    WriteOutputs(to, facts);
    to.One("process_resident_memory_bytes", "gauge", "Resident memory size in bytes.",
           static_cast<double>(facts.memoryBytes));
    to.One("process_open_fds", "gauge", "Number of open file descriptors.",
           static_cast<double>(facts.openDescriptors));
    return to.Take();
}

}  // namespace nordkeep
