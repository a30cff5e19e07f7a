// Encoding the weekly menu and a member record, beside RapidJSON's Writer<StringBuffer> writing
// the same content: the same records walked through the same field tables, only the writer
// differs. (RapidJSON copies string bytes as they are; ours also checks their UTF-8.)

#include <benchmark/benchmark.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "bench/BenchBodies.h"
#include "model/ModelCodec.h"

namespace nutrition::bench {
namespace {

using RapidWriter = rapidjson::Writer<rapidjson::StringBuffer>;

void emit(RapidWriter& out, const std::string& value) {
  out.String(value.data(), rapidjson::SizeType(value.size()));
}
void emit(RapidWriter& out, std::int64_t value) {
  out.Int64(value);
}
void emit(RapidWriter& out, double value) {
  out.Double(value);
}
void emit(RapidWriter& out, bool value) {
  out.Bool(value);
}
void emit(RapidWriter& out, Date value) {
  char text[kIso8601Length];
  formatIso8601(value, text);
  out.String(text, rapidjson::SizeType(kIso8601Length));
}
template <RawEnum E>
void emit(RapidWriter& out, E value) {
  const auto raw = rawValue(value);
  if constexpr (std::is_integral_v<decltype(raw)>) {
    out.Int64(raw);
  } else {
    out.String(raw.data(), rapidjson::SizeType(raw.size()));
  }
}
template <class T>
void emit(RapidWriter& out, const std::vector<T>& values);
template <json::JsonRecord T>
void emit(RapidWriter& out, const T& record);

template <class T>
void emit(RapidWriter& out, const std::vector<T>& values) {
  out.StartArray();
  for (const auto& value : values)
    emit(out, value);
  out.EndArray();
}

template <json::JsonRecord T>
void emit(RapidWriter& out, const T& record) {
  out.StartObject();
  const auto field = [&](const auto& f) {
    const auto& value = record.*f.member;
    if constexpr (requires { value.has_value(); }) {
      if (!value) return;
      out.Key(f.key.data(), rapidjson::SizeType(f.key.size()));
      emit(out, *value);
    } else {
      out.Key(f.key.data(), rapidjson::SizeType(f.key.size()));
      emit(out, value);
    }
  };
  std::apply([&](const auto&... fields) { (field(fields), ...); }, T::jsonFields());
  out.EndObject();
}

template <class T>
void ours(benchmark::State& state, const T& value) {
  std::size_t bytes = 0;
  for (auto _ : state) {
    auto text = encodeJson(value);
    bytes = text->size();
    benchmark::DoNotOptimize(text);
  }
  state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(bytes));
}

template <class T>
void rapid(benchmark::State& state, const T& value) {
  std::size_t bytes = 0;
  for (auto _ : state) {
    rapidjson::StringBuffer buffer;
    RapidWriter out(buffer);
    emit(out, value);
    bytes = buffer.GetSize();
    benchmark::DoNotOptimize(buffer.GetString());
  }
  state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(bytes));
}

void EncodeMenu_Ours(benchmark::State& state) {
  ours(state, weeklyMenu());
}
void EncodeMenu_RapidJson(benchmark::State& state) {
  rapid(state, weeklyMenu());
}
void EncodeMember_Ours(benchmark::State& state) {
  ours(state, member());
}
void EncodeMember_RapidJson(benchmark::State& state) {
  rapid(state, member());
}

BENCHMARK(EncodeMenu_Ours);
BENCHMARK(EncodeMenu_RapidJson);
BENCHMARK(EncodeMember_Ours);
BENCHMARK(EncodeMember_RapidJson);

}  // namespace
}  // namespace nutrition::bench
