#pragma once

#include "json5/reader.h"
#include "json5/value.h"
#include "json5/writer.h"

#include <stdexcept>
#include <string>
#include <string_view>

#if __has_include(<nlohmann/json.hpp>)
#include <nlohmann/json.hpp>
#define DUNKMAN_BENCH_NLOHMANN
#endif

#if __has_include(<rapidjson/document.h>)
#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#define DUNKMAN_BENCH_RAPIDJSON
#endif

// The reader and writer of the game and, where they are installed, two well-known libraries, all behind the
// same two functions. Each reads into a tree that can be changed, with exact floating-point numbers, and
// writes with an indent of two.
namespace dunkman::bench {

struct Ours {
    using Value = JsonValue;

    static Value read(const std::string& text) {
        JsonValue value;
        Json5Report report;
        parseDocument(std::string_view(text), report, value);
        if (report.code != Json5Error::None && report.code != Json5Error::EndOfInput) {
            throw std::runtime_error("the text of the benchmark has a fault: " + report.message);
        }
        return value;
    }

    static std::string write(const Value& value) {
        std::string text;
        writeJson5(value, text, "  ");
        return text;
    }
};

#ifdef DUNKMAN_BENCH_NLOHMANN
struct Nlohmann {
    using Value = nlohmann::json;

    static Value read(const std::string& text) { return Value::parse(text); }
    static std::string write(const Value& value) { return value.dump(2); }
};
#endif

#ifdef DUNKMAN_BENCH_RAPIDJSON
struct RapidJson {
    using Value = rapidjson::Document;

    static Value read(const std::string& text) {
        Value value;
        value.Parse<rapidjson::kParseFullPrecisionFlag>(text.data(), text.size());
        return value;
    }

    static std::string write(const Value& value) {
        rapidjson::StringBuffer text;
        rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(text);
        writer.SetIndent(' ', 2);
        value.Accept(writer);
        return text.GetString();
    }
};
#endif

} // namespace dunkman::bench
