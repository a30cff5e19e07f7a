#pragma once
// What the fuzzers feed: every decoder the backend and the shipped resources reach, the date
// parser, the key-value and notification files and the string tables. Each entry takes any
// bytes; a crash, a sanitizer report or a broken property (what decodes must encode and decode
// to the same record; what was saved stays) stops the program with a message.
//
// The libFuzzer programs (fuzz/FuzzMain.cpp) call one entry each; the unit tests replay the
// committed corpora and every input a fuzzer ever found through the same entries.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace nutrition::fuzz {

using Entry = int (*)(const std::uint8_t* data, std::size_t size);

// The first byte picks the record; the rest is the backend's JSON answer.
int backendRecords(const std::uint8_t* data, std::size_t size);
// The first byte picks the resource record (questionnaire, phases, alert items, waiting
// screens, a string table); the rest is its JSON file.
int resourceRecords(const std::uint8_t* data, std::size_t size);
int dates(const std::uint8_t* data, std::size_t size);
int keyValueFile(const std::uint8_t* data, std::size_t size);
int notificationFile(const std::uint8_t* data, std::size_t size);
int stringTables(const std::uint8_t* data, std::size_t size);

struct Target {
  std::string_view name;  // also the folder of its corpus under fuzz/corpus
  Entry entry;
};

inline constexpr Target kTargets[] = {
    {"backend_records", backendRecords},
    {"resource_records", resourceRecords},
    {"dates", dates},
    {"key_value_file", keyValueFile},
    {"notification_file", notificationFile},
    {"string_tables", stringTables},
};

}  // namespace nutrition::fuzz
