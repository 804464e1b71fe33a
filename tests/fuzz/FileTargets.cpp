#include "console/setup/Descriptor.h"
#include "network/UsersCheck.h"
#include "pipeline/ForwarderCheck.h"
#include "ports/PortCheck.h"
#include "ports/formats/CollectedFile.h"
#include "ports/formats/XmlText.h"
#include "runtime/Dates.h"
#include "runtime/IniText.h"
#include "runtime/Language.h"
#include "store/EventFile.h"
#include "store/TemplateCheck.h"
#include "store/TextTemplate.h"
#include "tests/fuzz/Targets.h"
#include "translation/SetCheck.h"

#include <cstdlib>

namespace nordkeep {
namespace {

void RunIni(TextView input) {
    IniText ini{Text(input)};
    for (const Text& key : ini.Keys("General")) ini.Value("General", key);
    const Text changed = ini.WithValue("General", "Key", "value");
    if (IniText(changed).Value("General", "Key") != "value") std::abort();
    ReadIniFromText(input, "General", "Key", "");
    ListIniKeysFromText(input, "General");
}

// Whatever can be read is written again to the same bytes.
void RunEventFile(TextView input) {
    cAlarm alarm;
    if (!ReadFromDisk(input, 1, alarm)) return;
    cAlarm again;
    const Text bytes = EventBytes(alarm, 0, 0);
    if (!ReadFromDisk(bytes, 1, again) || EventBytes(again, 0, 0) != bytes) std::abort();
    GeneralDate(alarm.m_TimeStamp);
}

void RunLanguage(TextView input) {
    Language language;
    language.LoadFrom(input);
    language.GetLanguageText(1);
}

// A descriptor that is damaged never hides what the delivered one shows.
void RunDescriptor(TextView input) {
    const SetupDescriptor delivered = ParseDescriptor("Page;a;1\nGroup;2\nKey;S;K;text;1;2;centre;now;x\n");
    SetupDescriptor read = ParseDescriptor(input);
    if (read.fault) return;
    const bool isHidden = !read.hidden.empty();
    if (!FindKey(Complete(std::move(read), delivered), {"S", "K"}) && !isHidden) std::abort();
}

void RunDates(TextView input) {
    ParseCompactTime(input);
    ParseDateTime(input);
    FormatDate(OleDate::FromDays(45000.5), input);
}

/// A template on the first line, and the document that fills it behind.
void RunFieldMap(TextView input) {
    const std::size_t end = input.find('\n');
    const TextView document = end == TextView::npos ? TextView() : input.substr(end + 1);
    ExpandTemplate(input.substr(0, end), [document](TextView name) -> std::optional<Text> {
        const auto element = FindXmlElement(document, name, XmlNames::IgnoreCase);
        return element ? std::optional<Text>(element->inner) : std::nullopt;
    });
}

void RunFiles(TextView input) {
    for (const auto format : {MessageFormat::TorvexConfirmationFile, MessageFormat::NordkeepFile}) {
        FileStep step;
        while (!step.isLast) {
            const std::size_t at = step.next;
            step = NextFileStep({.file = input, .start = at, .isWhole = true}, *FileFormOf(format), 1, {});
            if (step.next < at + !step.isLast || step.next > input.size()) std::abort();
        }
        if (step.next != input.size()) std::abort();
    }
}

// What people type, by the checks of every kind of file.
void RunChecks(TextView input) {
    const Language language;
    Findings findings(language);
    FileFindings file(findings, "file");
    const SettingCatalogue known;
    const IniLines main(input);
    CheckIniForm(main, file);
    CheckTemplates(main, file);
    CheckForwarders(main, file);
    CheckColumns(main, "General", file);
    CheckUsers(input, file);
    CheckTypeCodes(input, file);
    CheckDataCodes(input, file);
    const PortSurroundings around{.known = known,
                                  .main = main,
                                  .rightsOf = [](TextView) { return FileRights(); },
                                  .isSetThere = [](TextView) { return false; }};
    PortCheck ports(around);
    ports.Check("Port1", input, file);
    ports.Check("Port2", input, file);
    IdCodeCheck objects(input, {.mapSize = [](TextView) { return SizeOfPicture("GIF8"); }}, file);
    while (objects.Continue()) {
    }
    findings.Sort();
    SizeOfPicture(input);
}

}  // namespace

std::vector<FuzzTarget> FileTargets() {
    return {
        {"ini", &RunIni, {"[General]\r\nKey=value\r\n; remark\r\n[Other]\r\nA=\"b\"\r\n"}},
        {"event", &RunEventFile, {EventBytes(cAlarm{.m_AlarmCode = "1234", .m_IdCode = "12"}, 0, 3)}},
        {"language", &RunLanguage, {"0=English\r\n1=One=two\r\n"}},
        {"descriptor",
         &RunDescriptor,
         {"Page;a;1;hidden\nGroup;\"x\"\nKey;S;K;number 1..9;1;2;centre;now;x\nHide;S;L;port\n",
          "Page;a;1\nGroup;2\nKey;S;K;choice 0=1,b=\"c\";1;2;workstation;restart;\n"}},
        {"dates", &RunDates, {"20240510070809", "2024-05-10 07:08:09", "YYYY-MM-DD \"x\" \\y HH:MM"}},
        {"fieldmap",
         &RunFieldMap,
         {"[A:1-2][CU:x][B::10][65][R:a:b][C]\n<A>abcd</A><B>y</b>",
          "[ReplaceAll]\n<ReplaceAll>x</ReplaceAll>"}},
        {"checks",
         &RunChecks,
         {"[General]\r\nPortType=TCPS\r\nPortNumber=1\r\nMSMQLabel=[DATE][X]\r\n[Translate]\r\nSIA=A,,B\r\n",
          "FORMAT=1,6,0,0,7,2\r\nZEROTRIM=1\r\n001/07;N;07:00:00-09:00:00,;M/1/2;1;30;;1;0;2;15\r\n",
          "[Users]\r\na=A,B,C,2\r\n[Event]\r\nBA=x;BR;1\r\n130=y;Z;1\r\n"}},
        {"files",
         &RunFiles,
         {"0|2024-05-17|13:45:00|10000101||7|1|Text|Me\r\n", "0|||0701|a|b|c|d|e\r\n\r\nrubbish\n"}},
    };
}

}  // namespace nordkeep
