#include "render/texture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "base/fatal.h"
#include "render/image_table_writer.h"
#include "render/renderer.h"
#include "render/renderer_objects.h"
#include "tests/fakes/recording_gl.h"
#include "tests/render/dds_bytes.h"
#include "tests/render/sprite_scene.h"

namespace dunkman {
namespace {

using testing::ElementsAre;

class TextureLoading : public testing::Test {
protected:
    ~TextureLoading() override { std::filesystem::remove(path); }

    Texture2D load(const DdsBytes& file) {
        std::ofstream(path, std::ios::binary) << file.build();
        return Texture2D(path.string());
    }

    RecordingGl gl;
    std::filesystem::path path = std::filesystem::temp_directory_path() / "dunkman_texture_test.dds";
};

TEST_F(TextureLoading, CreatesStorageThenUploadsLevelByLevel) {
    load({.width = 8, .height = 4, .mipMapCount = 3});
    const std::string format = "GL_COMPRESSED_RGBA_S3TC_DXT1_EXT";
    EXPECT_THAT(gl.calls,
                ElementsAre("glCreateTextures(GL_TEXTURE_2D, 1)",
                            "glTextureStorage2D(1, 3, " + format + ", 8, 4)",
                            "glCompressedTextureSubImage2D(1, 0, 0, 0, 8, 4, " + format + ", 16, {1})",
                            "glCompressedTextureSubImage2D(1, 1, 0, 0, 4, 2, " + format + ", 8, {2})",
                            "glCompressedTextureSubImage2D(1, 2, 0, 0, 2, 1, " + format + ", 8, {3})"));
}

TEST_F(TextureLoading, DescribesTheTexture) {
    const Texture2D texture = load({.width = 8, .height = 4, .mipMapCount = 3});
    EXPECT_EQ(texture.name, 1u);
    EXPECT_EQ(texture.internalFormat, 0x83F1u);
    EXPECT_EQ(texture.width, 8u);
    EXPECT_EQ(texture.height, 4u);
    EXPECT_EQ(texture.levels, 3u);
}

TEST_F(TextureLoading, LooksForEmptyBordersWhereOpenGlIsDoneInSoftware) {
    std::string bytes = DdsBytes{.width = 8, .height = 4}.build();
    bytes.replace(bytes.size() - 12, 4,
                  "\xFF\xFF\xFF\xFF"); // the indices of the left one of two blocks: transparent
    std::ofstream(path, std::ios::binary) << bytes;
    EXPECT_NO_THROW(Texture2D(path.string())) << "without a renderer";
    const SpriteScene scene;
    Texture2D(path.string());
    rendererObjects->software.emplace(ShaderSourceSet{}, ShaderSourceSet{});
    Texture2D texture(path.string());
    const auto& known = rendererObjects->software->coverage;
    ASSERT_EQ(known.size(), 1u);
    EXPECT_EQ(known.at(texture.name).front().parts[0].left, 3);
    texture.release();
    EXPECT_TRUE(known.empty());
}

TEST_F(TextureLoading, UploadsLevelsBeyondTheStorageToo) {
    load({.width = 256, .height = 64, .mipMapCount = 20});
    EXPECT_EQ(gl.calls[1], "glTextureStorage2D(1, 9, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT, 256, 64)");
    EXPECT_EQ(gl.calls.size(), 2u + 20u);
    EXPECT_EQ(gl.calls.back(),
              "glCompressedTextureSubImage2D(1, 19, 0, 0, 1, 1, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT, 8, {20})");
}

TEST_F(TextureLoading, MakesNoTextureOfABrokenFile) {
    EXPECT_THROW(load({.mipMapCount = 0}), FatalError);
    EXPECT_THROW(Texture2D("no_such.dds"), FatalError);
    EXPECT_THAT(gl.calls, testing::IsEmpty());
}

TEST_F(TextureLoading, ReleaseDeletesTheTextureAndForgetsItsName) {
    Texture2D texture;
    texture.name = 12;
    texture.release();
    EXPECT_THAT(gl.calls, ElementsAre("glDeleteTextures(1, {12})"));
    EXPECT_EQ(texture.name, 0u);
}

TEST(Texture, ThatWasNeverLoadedIsNothingInOneChannel) {
    const Texture2D texture;
    EXPECT_EQ(texture.name, 0u);
    EXPECT_EQ(texture.internalFormat, 0x8229u);
    EXPECT_EQ(texture.width, 0u);
    EXPECT_EQ(texture.height, 0u);
    EXPECT_EQ(texture.levels, 1u);
}

TEST(Texture, AspectTakesAnExtentOfZeroForOne) {
    Texture2D texture;
    EXPECT_EQ(aspectOf(texture), 1.0);
    texture.height = 4;
    EXPECT_EQ(aspectOf(texture), 0.25);
    texture.width = 200;
    EXPECT_EQ(aspectOf(texture), 50.0);
}

TEST(ImageTable, NamesAnUnknownKey) {
    const RecordingGl gl;
    try {
        imageByKey("flamingoo");
        FAIL();
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("\"flamingoo\""));
    }
}

TEST(ImageTable, FindsAKey) {
    const RecordingGl gl;
    writable::pictures.imageTable["sunset"].name = 5;
    EXPECT_EQ(imageByKey("sunset").name, 5u);
    resetRenderer();
    EXPECT_TRUE(pictures.imageTable.empty());
}

} // namespace
} // namespace dunkman
