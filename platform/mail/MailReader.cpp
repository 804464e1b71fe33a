#include "platform/MailReader.h"

#include <gmime/gmime.h>
#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

namespace nordkeep {
namespace {

constexpr int kDeepestPart = 8;

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using Owned = std::unique_ptr<Object, Unref>;

Owned<GMimeMessage> Parse(TextView bytes) {
    static const bool isReady = (g_mime_init(), true);
    if (!isReady) return {};
    const Owned<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(bytes.data(), bytes.size()));
    const Owned<GMimeParser> parser(g_mime_parser_new_with_stream(stream.get()));
    g_mime_parser_set_format(parser.get(), GMIME_FORMAT_MESSAGE);
    return Owned<GMimeMessage>(g_mime_parser_construct_message(parser.get(), nullptr));
}

/// A folded value; what stands around a fold is one blank.
Text OnOneLine(TextView raw) {
    Text value;
    bool isFold = true;
    for (const char c : raw) {
        const bool isEnd = c == '\r' || c == '\n';
        if (isEnd) isFold = true;
        if (isEnd || (isFold && (c == ' ' || c == '\t'))) continue;
        if (isFold && !value.empty()) value = Text(TrimBlanksAndTabs(value)) + ' ';
        isFold = false;
        value += c;
    }
    return Text(TrimBlanksAndTabs(value));
}

/// The first field of this name that says something, on one line.
Text FieldOf(GMimeObject* object, const char* name) {
    GMimeHeaderList* list = g_mime_object_get_header_list(object);
    for (int i = 0; i < g_mime_header_list_get_count(list); ++i) {
        GMimeHeader* header = g_mime_header_list_get_header_at(list, i);
        const char* raw = g_mime_header_get_raw_value(header);
        if (!raw || g_ascii_strcasecmp(g_mime_header_get_name(header), name) != 0) continue;
        Text value = OnOneLine(raw);
        if (!value.empty()) return value;
    }
    return {};
}

bool IsAttached(GMimeObject* object) {
    const char* disposition = g_mime_object_get_disposition(object);
    return disposition && g_ascii_strcasecmp(disposition, "attachment") == 0;
}

/// The first part of this type that is not attached, looked for in depth.
GMimePart* FindText(GMimeObject* object, const char* subtype, int deepest) {
    if (GMIME_IS_MULTIPART(object)) {
        auto* const multipart = GMIME_MULTIPART(object);
        const int count = deepest > 0 ? g_mime_multipart_get_count(multipart) : 0;
        for (int i = 0; i < count; ++i) {
            if (auto* const found = FindText(g_mime_multipart_get_part(multipart, i), subtype, deepest - 1))
                return found;
        }
        return nullptr;
    }
    const bool isText = GMIME_IS_PART(object) && !IsAttached(object) &&
                        g_mime_content_type_is_type(g_mime_object_get_content_type(object), "text", subtype);
    return isText ? GMIME_PART(object) : nullptr;
}

GMimePart* FindBody(GMimeObject* top) {
    for (const char* subtype : {"plain", "*"}) {
        if (auto* const found = FindText(top, subtype, kDeepestPart)) return found;
    }
    return GMIME_IS_PART(top) && !IsAttached(top) ? GMIME_PART(top) : nullptr;
}

Text ContentOf(GMimePart* part) {
    GMimeDataWrapper* content = g_mime_part_get_content(part);
    if (!content) return {};
    const Owned<GMimeStream> out(g_mime_stream_mem_new());
    g_mime_data_wrapper_write_to_stream(content, out.get());
    const GByteArray* bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(out.get()));
    return Text(reinterpret_cast<const char*>(bytes->data), bytes->len);
}

void TakeBody(MailParts& mail, GMimePart* part) {
    auto* const object = GMIME_OBJECT(part);
    GMimeContentType* type = g_mime_object_get_content_type(object);
    const GMimeContentEncoding encoding = g_mime_part_get_content_encoding(part);
    const char* charset = g_mime_content_type_get_parameter(type, "charset");
    mail.body = ContentOf(part);
    mail.charset = charset ? charset : "";
    mail.isHtml = g_mime_content_type_is_type(type, "text", "html");
    mail.wasEncoded =
        encoding == GMIME_CONTENT_ENCODING_BASE64 || encoding == GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE;
}

bool HasFields(GMimeObject* object) {
    return object && g_mime_header_list_get_count(g_mime_object_get_header_list(object)) > 0;
}

/// Those that tell of the content stand with the content.
bool HasFields(GMimeMessage* message) {
    return HasFields(GMIME_OBJECT(message)) || HasFields(g_mime_message_get_mime_part(message));
}

/// What a mail without a header that can be read says.
Text BehindEmptyLine(TextView bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
        const bool isEmpty = end == at || (end == at + 1 && bytes[at] == '\r');
        at = end + 1;
        if (isEmpty) return Text(bytes.substr(std::min(at, bytes.size())));
    }
    return {};
}

/// No path and no instructions to the converter.
bool IsCharsetName(TextView name) {
    return !name.empty() && name.find_first_not_of(
                                "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                "0123456789-_.:+()") == TextView::npos;
}

struct CloseIconv {
    using pointer = iconv_t;
    void operator()(iconv_t converter) const {
        if (converter != reinterpret_cast<iconv_t>(-1)) iconv_close(converter);
    }
};

}  // namespace

MailParts TakeMailApart(TextView bytes) {
    MailParts mail;
    const Owned<GMimeMessage> message = Parse(bytes);
    if (!message || !HasFields(message.get())) {
        mail.body = BehindEmptyLine(bytes);
        return mail;
    }
    auto* const object = GMIME_OBJECT(message.get());
    mail.from = FieldOf(object, "From");
    mail.to = FieldOf(object, "To");
    mail.subject = FieldOf(object, "Subject");
    GMimeObject* top = g_mime_message_get_mime_part(message.get());
    if (GMimePart* body = top ? FindBody(top) : nullptr) TakeBody(mail, body);
    return mail;
}

std::optional<std::string> Utf8FromCharset(TextView bytes, TextView charset) {
    constexpr TextView kMark = "\xEF\xBB\xBF";
    if (!IsCharsetName(charset)) return std::nullopt;
    const std::string name(charset);
    const std::unique_ptr<iconv_t, CloseIconv> converter(iconv_open("UTF-8", name.c_str()));
    if (converter.get() == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
    std::string utf8;
    auto* in = const_cast<char*>(bytes.data());
    std::size_t left = bytes.size();
    std::array<char, 4096> buffer{};
    while (left > 0) {
        char* out = buffer.data();
        std::size_t room = buffer.size();
        const bool isDone = iconv(converter.get(), &in, &left, &out, &room) != static_cast<std::size_t>(-1);
        utf8.append(buffer.data(), buffer.size() - room);
        if (isDone || errno == E2BIG) continue;
        utf8 += '?';
        ++in;
        --left;
    }
    if (utf8.starts_with(kMark)) utf8.erase(0, kMark.size());
    return utf8;
}

}  // namespace nordkeep
