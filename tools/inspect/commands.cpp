#include "tools/inspect/commands.h"

#include <cstdint>
#include <exception>

#include "assets/catalog_writer.h"
#include "json5/canonical.h"
#include "json5/reader.h"
#include "json5/writer.h"
#include "platform/simulated/gl_sim.h"
#include "render/dds.h"
#include "render/renderer.h"
#include "render/shader_preprocessor.h"
#include "tools/inspect/data_check.h"
#include "tools/reference/data_reference.h"
#include "tools/reference/json_schema.h"
#include "world/scene_loader.h"
#include "world/trace.h"
#include "world/world.h"

namespace dunkman::inspect {

namespace {

std::string number(std::uint64_t value) { return std::to_string(value); }

} // namespace

int printJson5(const std::string& path, std::string& out) {
    Json5Report report;
    JsonValue value;
    try {
        value = parseFile(path, report);
    } catch (const std::exception& error) {
        out += std::string("exception ") + error.what() + '\n';
        return 0;
    }
    const Json5Position& position = report.position;
    out += "code " + number(static_cast<std::uint32_t>(report.code)) + '\n';
    out += "message " + canonicalText(JsonValue::makeString(report.message)) + '\n';
    out += "position " + number(position.characters) + ' ' + number(position.line) + ' ' +
           number(position.column) + ' ' + number(position.previousLineLength) + '\n';
    out += "value " + canonicalText(value) + '\n';
    return 0;
}

int printWritten(const std::string& path, int indent, std::string& out) {
    writeJson5(parseFile(path), out, std::string(static_cast<std::size_t>(indent), ' '), 0);
    return 0;
}

int printShader(const std::string& path, std::string& out) {
    out += preprocessShaderFile(path);
    return 0;
}

int printDds(const std::string& path, std::string& out) {
    const DdsHeader header = readDds(path).header;
    out += "texture " + number(header.width) + ' ' + number(header.height) +
           " levels=" + number(ddsStorageLevels(header)) + '\n';
    for (const DdsUpload& upload : ddsUploads(header)) {
        out += "level " + number(upload.level) + ' ' + number(upload.width) + ' ' + number(upload.height) +
               " bytes=" + number(upload.bytes) + " offset=" + number(upload.offset) + '\n';
    }
    return 0;
}

int printReference(std::string& out) {
    out += reference::dataReference();
    return 0;
}

int printSchema(const std::string& name, std::string& out) {
    const std::string schema = reference::jsonSchema(name);
    out += schema;
    return schema.empty() ? 1 : 0;
}

int printScene(std::string& out) {
    simulated::loadGlFunctions();
    createRenderer();
    writable::assetCatalog.loadAll();
    loadScene();
    appendWorldTrace(out);
    return 0;
}

int printFaults(std::string& out, std::string& notes) {
    const CheckResult result = checkData();
    for (const std::string& fault : result.faults) {
        out += fault + '\n';
    }
    for (const std::string& note : result.notes) {
        notes += note + '\n';
    }
    return result.faults.empty() ? 0 : 1;
}

} // namespace dunkman::inspect
