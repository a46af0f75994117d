#include <algorithm>
#include <istream>
#include <ostream>
#include <string>

#include "json5/reader.h"
#include "json5/writer.h"

// Apart from the rest: the game reads and writes texts in memory, and what it does not call is not linked.
namespace dunkman {

void parseDocument(std::istream& stream, Json5Report& report, JsonValue& value) {
    // Block by block as the stream has them ready: what comes before a failure counts, so no read may span
    // one.
    std::string text;
    while (stream.peek() != std::istream::traits_type::eof()) {
        const std::streamsize ready = std::max<std::streamsize>(1, stream.rdbuf()->in_avail());
        const std::size_t size = text.size();
        text.resize(size + static_cast<std::size_t>(ready));
        stream.read(text.data() + size, ready);
        text.resize(size + static_cast<std::size_t>(stream.gcount()));
    }
    Json5Reader reader(text, stream.eof() ? Json5Error::EndOfInput : Json5Error::StreamFailed);
    reader.parseDocument(value);
    report = reader.report();
}

void writeJson5(const JsonValue& value, std::ostream& stream, std::string_view indentUnit, int depth) {
    std::string text;
    writeJson5(value, text, indentUnit, depth);
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
}

} // namespace dunkman
