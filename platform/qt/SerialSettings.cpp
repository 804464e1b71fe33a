#include "platform/qt/SerialSettings.h"

#include <array>
#include <charconv>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kHighestBaud = 4'000'000;

constexpr std::array<std::pair<TextView, QSerialPort::Parity>, 5> kParities = {
    {{"N", QSerialPort::NoParity},
     {"E", QSerialPort::EvenParity},
     {"O", QSerialPort::OddParity},
     {"M", QSerialPort::MarkParity},
     {"S", QSerialPort::SpaceParity}}};
constexpr std::array<std::pair<TextView, QSerialPort::DataBits>, 4> kDataBits = {{{"5", QSerialPort::Data5},
                                                                                  {"6", QSerialPort::Data6},
                                                                                  {"7", QSerialPort::Data7},
                                                                                  {"8", QSerialPort::Data8}}};
constexpr std::array<std::pair<TextView, QSerialPort::StopBits>, 3> kStopBits = {
    {{"1", QSerialPort::OneStop}, {"1.5", QSerialPort::OneAndHalfStop}, {"2", QSerialPort::TwoStop}}};

TextView TakeField(TextView& text) {
    const std::size_t comma = std::min(text.find(','), text.size());
    const TextView field = TrimBlanks(text.substr(0, comma));
    text.remove_prefix(std::min(comma + 1, text.size()));
    return field;
}

template <typename Table, typename Value>
void Choose(const Table& table, TextView field, Value& value) {
    for (const auto& [name, meaning] : table) {
        if (EqualsNoCase(name, field)) value = meaning;
    }
}

}  // namespace

SerialSettings ParseSerialSettings(TextView text) {
    SerialSettings settings;
    const TextView baud = TakeField(text);
    int number = 0;
    const auto read = std::from_chars(baud.data(), baud.data() + baud.size(), number);
    if (read.ec == std::errc() && number > 0 && number <= kHighestBaud) settings.baud = number;
    Choose(kParities, TakeField(text), settings.parity);
    Choose(kDataBits, TakeField(text), settings.dataBits);
    Choose(kStopBits, TakeField(text), settings.stopBits);
    return settings;
}

}  // namespace nordkeep
