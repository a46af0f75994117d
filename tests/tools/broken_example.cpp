#include "tests/tools/broken_example.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace dunkman {

namespace {

constexpr const char* exampleFolder = "tests/tools/broken_data";

std::string textOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string unescaped(const std::string& text) {
    std::string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            out += text[at];
        } else if (text.at(++at) == 'x') {
            out += static_cast<char>(std::stoi(text.substr(at + 1, 2), nullptr, 16));
            at += 2;
        } else {
            out += text[at] == 'n' ? '\n' : text[at];
        }
    }
    return out;
}

// Two frames of layer III, as long as their header says: 128 kbit/s at 44100 Hz.
std::string smallMp3() {
    const std::string frame = std::string("\xFF\xFB\x90\x00", 4) + std::string(413, '\0');
    return frame + frame;
}

BrokenExample readExample(const std::filesystem::path& path) {
    BrokenExample example;
    example.name = path.stem().string();
    std::istringstream lines(textOf(path));
    for (std::string line; std::getline(lines, line);) {
        const std::string verb = line.substr(0, line.find(' '));
        if (verb == "expect") {
            example.expected += unescaped(line.substr(verb.size() + 1)) + '\n';
        } else if (verb == "needs") {
            example.neededProgram = line.substr(verb.size() + 1);
        } else {
            example.steps.push_back(line);
        }
    }
    return example;
}

class Breaker {
public:
    explicit Breaker(const SmallData& directory) : data(directory) {}

    void apply(const std::string& step) {
        const std::string verb = step.substr(0, step.find(' '));
        const std::string rest = verb.size() < step.size() ? step.substr(verb.size() + 1) : "";
        std::istringstream numbers(rest);
        if (verb == "in") {
            file = rest;
        } else if (verb == "replace") {
            replaced = unescaped(rest);
        } else if (verb == "by") {
            replaceOnce(unescaped(rest));
        } else if (verb == "write") {
            data.write(file, unescaped(rest));
        } else if (verb == "prepend") {
            data.write(file, unescaped(rest) + data.read(file));
        } else if (verb == "append") {
            data.write(file, data.read(file) + unescaped(rest));
        } else if (verb == "repeat") {
            std::string text;
            std::size_t count = 0;
            numbers >> text >> count;
            data.write(file, std::string(count, text.at(0)));
        } else if (verb == "cut") {
            data.write(file, data.read(file).substr(0, std::stoul(rest)));
        } else if (verb == "byte") {
            std::string offset;
            std::string value;
            numbers >> offset >> value;
            std::string bytes = data.read(file);
            bytes.at(std::stoul(offset)) = static_cast<char>(std::stoi(value, nullptr, 0));
            data.write(file, bytes);
        } else if (verb == "remove") {
            data.remove(file);
        } else if (verb == "folder") {
            std::filesystem::create_directory(data.folder / file);
        } else {
            throw std::runtime_error("no such step: " + step);
        }
    }

private:
    void replaceOnce(const std::string& by) {
        std::string text = data.read(file);
        const std::size_t at = text.find(replaced);
        if (at == std::string::npos || text.find(replaced, at + 1) != std::string::npos) {
            throw std::runtime_error("does not stand once in " + file + ": " + replaced);
        }
        data.write(file, text.replace(at, replaced.size(), by));
    }

    const SmallData& data;
    std::string file;
    std::string replaced;
};

} // namespace

GoodData::GoodData() {
    const std::filesystem::path source = previousFolder / "tests" / "tools" / "good_data";
    for (const auto& entry : std::filesystem::directory_iterator(source)) {
        write(entry.path().filename().string(), textOf(entry.path()));
    }
    write("intro.mp3", smallMp3());
    write("zombiegame.mp3", smallMp3());
}

std::vector<BrokenExample> brokenExamples() {
    std::vector<BrokenExample> examples;
    std::error_code missing; // run from elsewhere there are none, which a test tells
    for (const auto& entry : std::filesystem::directory_iterator(exampleFolder, missing)) {
        examples.push_back(readExample(entry.path()));
    }
    std::sort(examples.begin(), examples.end(),
              [](const BrokenExample& left, const BrokenExample& right) { return left.name < right.name; });
    return examples;
}

void breakData(const BrokenExample& example, const SmallData& data) {
    Breaker breaker(data);
    for (const std::string& step : example.steps) {
        breaker.apply(step);
    }
}

} // namespace dunkman
