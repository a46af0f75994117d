#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "render/handle.h"

namespace dunkman {

// One active uniform or shader storage block of a linked program.
struct ProgramResource {
    std::int32_t location = 0; // of the uniform; of a storage block: its buffer binding point
    std::uint32_t type = 0;    // GL type of the uniform, or GL_SHADER_STORAGE_BUFFER
    std::int32_t unit = -1;    // texture or image unit that the shader gives a sampler or image; -1: neither
};

// A linked program and what it declares, by name. Everything is asked of the driver once, when the program is built.
class ProgramBase : public HandleBase {
public:
    ProgramBase();

    // Unbinds the program where it is bound, which also unbinds its material, then deletes it.
    void release() override;

    // Index into resources().
    std::optional<std::int32_t> findResource(std::string_view resourceName) const;

    const std::vector<ProgramResource>& resources() const { return records; }

protected:
    ~ProgramBase() = default;

    void recordResources();

private:
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
    };

    void recordUniform(std::uint32_t index);
    void recordStorageBlock(std::uint32_t index);
    void record(std::uint32_t kind, std::uint32_t index, std::int32_t nameLength,
                const ProgramResource& resource);

    std::unordered_map<std::string, std::int32_t, NameHash, std::equal_to<>> indices; // order never matters
    std::vector<ProgramResource> records;                                             // as discovered
};

// One text for each stage; an empty text means that the stage has no shader.
struct ShaderSourceSet {
    std::string vertex;
    std::string geometry;
    std::string tessellationControl;
    std::string tessellationEvaluation;
    std::string fragment;
};

class Program final : public ProgramBase {
public:
    // Compiles, links, validates and records. A stage or program that fails is a debugBreak with the driver's log;
    // `fileNames` says in its message where each text came from.
    explicit Program(const ShaderSourceSet& sources, const ShaderSourceSet& fileNames = {});
};

// Whether a uniform of this GL type names a texture or image unit: one of the 73 sampler and image types.
bool isOpaqueType(std::uint32_t type);

} // namespace dunkman
