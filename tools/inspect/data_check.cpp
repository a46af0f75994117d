#include "tools/inspect/data_check.h"

#include "tools/inspect/entry_check.h"
#include "tools/inspect/file_checks.h"
#include "tools/inspect/level_files.h"
#include "tools/inspect/level_run.h"
#include "tools/inspect/prefab_contents.h"
#include "tools/inspect/recipe_check.h"
#include "tools/inspect/shader_check.h"

namespace dunkman::inspect {

namespace {

void checkLevel(const LevelFiles& files, Faults& faults) {
    checkRecipes(files, faults);
    const PrefabContents contents(files, faults);
    EntryCheck entries(files, contents, faults);
    entries.checkPrefabs();
    entries.checkScene();
}

void checkAllShaders(const CheckOptions& options, CheckResult& result, Faults& faults) {
    ShaderStage vertex;
    ShaderStage fragment;
    if (checkShaders(faults, vertex, fragment) && !options.shaderCompiler.empty() &&
        compileShaders(options.shaderCompiler, vertex, fragment, faults) == ShaderCompiler::Absent) {
        result.notes.emplace_back("The shaders were not compiled: there is no " + options.shaderCompiler +
                                  " here (Debian has it in "
                                  "glslang-tools).");
    }
}

} // namespace

CheckResult checkData(const CheckOptions& options) {
    CheckResult result;
    Faults faults;
    const DataFile images("images_compressed.json5", JsonKind::Object, faults);
    const DataFile recipes("recipes.json5", JsonKind::Object, faults);
    const DataFile prefabs("prefabs.json5", JsonKind::Object, faults);
    const DataFile scene("scene.json5", JsonKind::Array, faults);
    const DataFile recording("recording.json5", JsonKind::Array, faults);
    checkImages(images, faults);
    checkGlyphs(faults);
    checkLevel({images, recipes, prefabs, scene}, faults);
    checkRecording(recording, faults);
    checkAllShaders(options, result, faults);
    checkMusic(faults);
    if (faults.empty()) {
        runLevel({images, recipes, prefabs, scene}, faults);
    }
    result.faults = faults.lines();
    return result;
}

} // namespace dunkman::inspect
