#include "ports/dc09/Dc09.h"
#include "ports/formats/Crc16.h"
#include "ports/formats/GoogolT1.h"
#include "ports/formats/Robofon.h"
#include "ports/formats/RobofonExport.h"
#include "ports/formats/Rsm02.h"
#include "ports/formats/SiaDecoding.h"
#include "ports/formats/SurGard.h"
#include "ports/formats/TextTelegram.h"
#include "ports/formats/VirtualReceiver.h"
#include "ports/formats/XmlGateways.h"
#include "tests/fuzz/Targets.h"

#include <cstdlib>

namespace nordkeep {
namespace {

constexpr TextCleaning kAllCleaning{
    .DOS7bitASCIItoISOLatin1 = true, .DOS8bitASCIItoISOLatin1 = true, .AdjustTabAndSpace = true};
// More than any telegram of that length can hold.
constexpr std::size_t kMostEventsOfOneByte = 300;

/// What stands in `received` is taken as far as it goes: a decoder consumes no more than there is, and comes
/// to an end.
template <class NextStep>
void Drain(Text& received, NextStep next) {
    while (!received.empty()) {
        const TelegramStep step = next(received);
        if (step.consumed > received.size() || step.events.size() > kMostEventsOfOneByte) std::abort();
        if (step.consumed == 0) return;
        received.erase(0, step.consumed);
    }
}

/// The input in one piece, and again on a fresh line in pieces of seven bytes.
template <class NewLine>
void Feed(TextView input, NewLine newLine) {
    Text whole(input);
    Drain(whole, newLine());
    constexpr std::size_t kPiece = 7;
    Text received;
    auto next = newLine();
    for (std::size_t at = 0; at < input.size(); at += kPiece) {
        received += input.substr(at, kPiece);
        Drain(received, next);
    }
}

void RunRobofon(TextView input) {
    Feed(input, [] {
        return [](TextView rest) { return NextRobofonStep(rest, {{.TimeStampFromRBM = true}}, {}); };
    });
}

void RunText(TextView input) {
    for (const bool isWrapped : {true, false}) {
        const TextTelegramSettings settings{.WrapWithSTXETX = isWrapped, .cleaning = kAllCleaning};
        Feed(input, [&] { return [&](TextView rest) { return NextTextStep(rest, settings, {}); }; });
    }
}

void RunGoogol(TextView input) {
    for (const bool isCode : {true, false}) {
        GoogolSettings settings{};
        settings.TimeStampFromRBM = true;
        settings.GoogolTextIsAlarmCode = isCode;
        settings.cleaning = kAllCleaning;
        Feed(input, [&] { return [&](TextView rest) { return NextGoogolStep(rest, settings, {}); }; });
    }
}

/// The input as the data of one frame with a right check.
void RunGoogolFrame(TextView input) {
    const Text data(input.substr(0, 255));
    Text frame =
        "\x01"
        "0\x05" +
        Text(2, '\0') + static_cast<char>(data.size()) + data;
    const unsigned sum = CRC16(frame);
    frame += static_cast<char>(sum >> 8);
    frame += static_cast<char>(sum & 255);
    RunGoogol(frame);
}

struct NoCallers final : CallerBook {
    std::optional<KnownCaller> FindCaller(TextView) const override { return std::nullopt; }
};

void RunRsm02(TextView input) {
    const NoCallers callers;
    for (const int behaviour : {0, 1}) {
        Rsm02Settings settings{};
        settings.TimeStampFromRBM = true;
        settings.cleaning = kAllCleaning;
        settings.multiCom.MultiComBehaviour = behaviour;
        Feed(input, [&] {
            return [&, state = Rsm02State()](TextView rest) mutable {
                return NextRsm02Step(rest, {settings, state, callers}, {});
            };
        });
    }
}

/// Each line of the input as class, bits and text of a frame with a right sum.
void RunRsm02Frames(TextView input) {
    constexpr std::size_t kMostText = 240;
    Text stream;
    while (input.size() > 2) {
        const std::size_t end = std::min(input.find('\n', 2), input.size());
        const TextView text = input.substr(2, std::min(end - 2, kMostText));
        const Text inner = Text(2, '\0') + static_cast<char>(15 + text.size()) + "P\x18\x05\x11\x0D\x2D\x03" +
                           Text(input.substr(0, 2)) + Text(1, '\0') + Text(text);
        unsigned sum = 0;
        for (const char c : inner) sum += static_cast<unsigned char>(c);
        stream += "\x02" + inner + static_cast<char>(sum >> 8) + static_cast<char>(sum & 255) + "\x03";
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    RunRsm02(stream);
}

void RunExport(TextView input) {
    RobofonExport queue({.RBM600ExportTestTelegramInterval = 1});
    queue.Add("1234", "30");
    for (int second = 0; second < 4; ++second) {
        queue.Tick({.monotonicMs = second * 1000, .tickMs = 1000, .canSend = true});
        if (queue.Receive(input).consumed > input.size()) std::abort();
    }
}

void RunXml(TextView input) {
    for (const auto next : {&NextSosAccessMiniStep, &NextAptusMiniStep, &NextSosAccessV4Step}) {
        for (const bool ignoresCase : {false, true}) {
            Feed(input, [&] {
                return [&](TextView rest) { return next(rest, {{.XmlNamesIgnoreCase = ignoresCase}}, {}); };
            });
        }
    }
}

void RunPollReply(TextView input) {
    cVirtualReceiver receiver = ReceiverOf(input);
    const PollReply read = ReadPollReply(input, receiver, {});
    receiver.m_EventNumber = read.eventNumber.value_or(0);
    ReadPollReply(input, receiver, {});
    const Text url = PollUrl("http://h/p", receiver, "ff");
    if (url.find_first_of(" \r\n") != Text::npos) std::abort();
}

Dc09Settings Dc09SettingsWith(bool isStrict) {
    Dc09Settings settings{};
    settings.RequireEncryption = settings.OnlyKnownAccounts = isStrict;
    if (isStrict) settings.Receiver = "1";
    settings.accounts = {{"AAAB", {.key = Text(16, 'A'), .seconds = 60}}, {"1234", {.seconds = 60}}};
    return settings;
}

/// Three answers are the most to one frame, and no answer is longer than a frame.
void RunDc09(TextView input) {
    for (const bool isStrict : {false, true}) {
        Feed(input, [&] {
            auto line = std::make_shared<Dc09Line>(Dc09SettingsWith(isStrict));
            return [line, atMs = std::int64_t{0}](TextView rest) mutable {
                TelegramStep step = line->Next(rest, {.monotonicMs = atMs += 1000});
                if (step.reply.size() > 4200) std::abort();
                if (step.receipt != 0) line->OnStored(step.receipt, atMs % 2000 == 0);
                line->Due({.monotonicMs = atMs, .isOpen = true});
                return step;
            };
        });
    }
}

/// Each line of the input as the content of a frame with a right check; behind a star it is encrypted.
void RunDc09Content(TextView input) {
    Text stream;
    while (!input.empty()) {
        const std::size_t end = std::min(input.find('\n'), input.size());
        const TextView line = input.substr(0, std::min<std::size_t>(end, 2000));
        const std::size_t bracket = line.find('[');
        const bool isEncrypted = line.starts_with("\"*") && bracket != TextView::npos;
        stream += MakeDc09Frame(isEncrypted ? Text(line.substr(0, bracket + 1)) +
                                                  EncipherDc09(line.substr(bracket + 1), Text(16, 'A'))
                                            : Text(line),
                                Dc09Check::Digits);
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    RunDc09(stream);
}

void RunSurGard(TextView input) {
    for (const int waitSeconds : {0, 5}) {
        SurGardSettings settings{};
        settings.sia.SIAAsciiBlockAsSeparateEvent = waitSeconds == 0;
        settings.sia.WaitForMLR2SIAASCIIBlockTimeout = waitSeconds;
        Feed(input, [&] {
            return [&settings, wait = SiaWait()](TextView rest) mutable {
                TelegramStep step = NextSurGardStep(rest, settings, wait, {});
                wait.Tick(1000, settings.sia, {});
                return step;
            };
        });
    }
}

void RunSia(TextView input) {
    for (const SiaForm form : {SiaForm::Lengths, SiaForm::Brackets}) {
        for (const bool isSeparate : {true, false}) {
            SiaSettings settings{};
            settings.SIAAsciiBlockAsSeparateEvent = isSeparate;
            const auto events = DecodeSIABlock({.text = Text(input), .form = form}, settings, {});
            if (events.size() > input.size() + 1) std::abort();
        }
    }
}

std::vector<Text> Joined(std::vector<Text> first, const std::vector<Text>& more) {
    first.insert(first.end(), more.begin(), more.end());
    return first;
}

}  // namespace

std::vector<FuzzTarget> LineTargets() {
    const std::vector<Text> sia = {"[#1234|Nti10:15/ri4/FA2]",
                                   "#1234|Nri1/BA001/BA2|AHall window",
                                   "[#001465|NRP000*'DECKERS'NM]",
                                   "[#1|Ori2BA02/ri3FA03][#2|X4711/Nid7TX00]",
                                   "[#12|&0045*23,5C*'T'xx]",
                                   "\x04#1234?\x07Nri1BA01?\\\x04"
                                   "AHall?"};
    return {
        {"robofon", &RunRobofon, Joined(ExamplesOf(0), {"\x07"})},
        {"text", &RunText, Joined(ExamplesOf(2), {"1234 x\r\n"})},
        {"googol", &RunGoogol, ExamplesOf(1)},
        {"googolframe",
         &RunGoogolFrame,
         {Text("\x18\x05\x11\x0D\x2D\x1E\0\0\0\x21\0", 11) + "1234 Larm hall"}},
        {"rsm02", &RunRsm02, ExamplesOf(4)},
        {"rsm02frames",
         &RunRsm02Frames,
         {"50123418113101015[B0701234567\n", "n0<AlarmRequest><TransmCode>4711</TransmCode><EventCode>832\n",
          "n\x20<AlarmRequest><EventCode>831</EventCode>\nn\x10</AlarmRequest><AddInfo>1811.</AddInfo>[B070",
          "C0\x04#1234?\x07Nri1BA01?", "x01234 SMS text[A",
          "m0\x04#1234?\x04"
          "AHall?"}},
        {"export", &RunExport, {"\x06", "\x15", "\x07\x06"}},
        {"xml", &RunXml, Joined(Joined(ExamplesOf(6), ExamplesOf(7)), ExamplesOf(9))},
        {"pollreply",
         &RunPollReply,
         {"OK:[42]<rocip100><EventCode>7</EventCode><site>100</site><EventText>T</EventText></rocip100>",
          "ERROR:EVENT QUEUE EMPTY", "OK:", "A \xE5#=secret,Harbour"}},
        {"surgard", &RunSurGard, ExamplesOf(13)},
        {"sia", &RunSia, sia},
        {"dc09", &RunDc09, ExamplesOf(109)},
        {"dc09content",
         &RunDc09Content,
         {"\"SIA-DCS\"0002R1L232#78919[#78919|Nri1/BA012][X012W34.1][Y045N12.2][Vhttp://a/"
          "]_14:12:04,09-25-2026",
          "\"ADM-CID\"0019R1L0#1234[#1234|1401 01 141]\n\"NULL\"0020#1234[]",
          "\"*SIA-DCS\"0003R1L0#AAAB[#AAAB|Nri1/FA01][X012W34.1]_00:00:00,12-30-1899",
          "\"*NULL\"0004R1L0#AAAB[]_00:00:00,12-30-1899"}},
    };
}

}  // namespace nordkeep
