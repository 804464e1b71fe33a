#include "ports/formats/Crc16.h"

namespace nordkeep {

std::uint16_t CRC16(TextView bytes) {
    constexpr unsigned kPolynomial = 0xA001;
    unsigned sum = 0;
    for (const char c : bytes) {
        sum ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit) sum = (sum & 1) != 0 ? (sum >> 1) ^ kPolynomial : sum >> 1;
    }
    return static_cast<std::uint16_t>(sum);
}

}  // namespace nordkeep
