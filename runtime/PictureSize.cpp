#include "runtime/PictureSize.h"

#include <cstddef>
#include <cstdlib>

namespace nordkeep {
namespace {

int ByteAt(TextView bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

int Big(TextView bytes, std::size_t at) {
    return ByteAt(bytes, at) * 256 + ByteAt(bytes, at + 1);
}

int Little(TextView bytes, std::size_t at) {
    return ByteAt(bytes, at) + ByteAt(bytes, at + 1) * 256;
}

/// Frame headers, which tell the size: C0 to CF without the tables DHT, JPG and DAC.
bool IsFrameHeader(int marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

std::optional<PictureSize> SizeOfJpeg(TextView bytes) {
    std::size_t at = 2;
    while (at + 9 < bytes.size() && ByteAt(bytes, at) == 0xFF) {
        const int marker = ByteAt(bytes, at + 1);
        if (IsFrameHeader(marker)) return PictureSize{Big(bytes, at + 7), Big(bytes, at + 5)};
        const int length = Big(bytes, at + 2);
        at += marker == 0xFF ? 1 : 2 + static_cast<std::size_t>(length);
    }
    return std::nullopt;
}

}  // namespace

std::optional<PictureSize> SizeOfPicture(TextView bytes) {
    if (bytes.size() < 26) return std::nullopt;
    if (bytes.starts_with("\x89PNG")) return PictureSize{Big(bytes, 18), Big(bytes, 22)};
    if (bytes.starts_with("GIF8")) return PictureSize{Little(bytes, 6), Little(bytes, 8)};
    if (bytes.starts_with("BM")) {
        // A height below 0 stands the lines the other way up.
        const int height = Little(bytes, 22);
        return PictureSize{Little(bytes, 18), ByteAt(bytes, 25) == 0xFF ? 65536 - height : height};
    }
    return bytes.starts_with("\xFF\xD8") ? SizeOfJpeg(bytes) : std::nullopt;
}

}  // namespace nordkeep
