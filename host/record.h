// Settings records as files, and in words: every field by name, for people and for programs.
#ifndef KV_HOST_RECORD_H
#define KV_HOST_RECORD_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "kvui/devmode.h"

using Json = nlohmann::ordered_json;

// A whole record from a file; a Failure when the file has another length.
DriverDevMode ReadRecord(const std::string &path);
std::optional<DriverDevMode> ReadRecordIfNamed(const std::string &path); // none for ""
// Replaces the file whole or leaves it as it was.
void WriteFile(const std::string &path, std::span<const uint8_t> bytes);
void WriteRecordIfNamed(const std::string &path, const DriverDevMode &record);

std::span<const uint8_t> BytesOf(const DriverDevMode &record);

// In what the record differs from one of this driver's, a line each; empty when in nothing.
std::vector<std::string> Strangeness(const DriverDevMode &record);

// An object of the fields by name; the parts of a name that dots separate are objects in it.
Json RecordToJson(const DriverDevMode &record);
// Grouped and aligned lines with units and the names of values and flags.
std::string RecordToText(const DriverDevMode &record);
void PrintRecord(const DriverDevMode &record, bool json);

// As one line of UTF-8 whatever the texts in it hold.
std::string JsonText(const Json &json);
// Text from outside without characters that would steer a terminal.
std::string Printable(const std::string &utf8);

// Sizes in words.
std::string TenthsOfMillimetre(int64_t v);

#endif
