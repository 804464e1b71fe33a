#pragma once

#include "platform/Text.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace nordkeep {

/// Builds a JSON object of texts and numbers, in UTF-8, in the order in which they are added.
class JsonObject {
 public:
    /// Every byte of the text comes back from ReadJsonObject.
    JsonObject& Add(std::string_view name, TextView text);
    JsonObject& Add(std::string_view name, const char* text) { return Add(name, TextView(text)); }
    JsonObject& Add(std::string_view name, std::int64_t number);
    JsonObject& Add(std::string_view name, int number) { return Add(name, std::int64_t{number}); }
    /// Comes back as the same bits; what is no number becomes null.
    JsonObject& Add(std::string_view name, double number);
    JsonObject& Add(std::string_view name, bool flag);
    JsonObject& AddNull(std::string_view name);
    /// The object; nothing is added to it any more.
    std::string Take();

 private:
    void Begin(std::string_view name);

    std::string json_ = "{";
};

/// Appends the text as a JSON string in its quotes, from Windows-1252.
void AppendJsonText(std::string& json, TextView text);

/// The members of an object as JsonObject writes it: each value as the text it stands for, numbers and words
/// as they stand.
class JsonMembers {
 public:
    /// "" for a member that is not there.
    const Text& String(std::string_view name) const;
    /// 0 for a member that is not there or no whole number.
    std::int64_t Integer(std::string_view name) const;
    /// Not a number for null, and for a member that is not there.
    double Number(std::string_view name) const;
    bool Has(std::string_view name) const { return values_.contains(name); }

 private:
    friend std::optional<JsonMembers> ReadJsonObject(std::string_view json);
    std::map<std::string, Text, std::less<>> values_{};
};

/// None for anything but one flat object: no member that is itself an object or a list.
std::optional<JsonMembers> ReadJsonObject(std::string_view json);

}  // namespace nordkeep
