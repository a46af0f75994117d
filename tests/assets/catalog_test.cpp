#include "assets/catalog_writer.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "app/reset.h"
#include "base/fatal.h"
#include "render/gl.h"
#include "render/image_table_writer.h"
#include "tests/fakes/scratch_folder.h"
#include "tests/world/world_fixture.h"

namespace dunkman {

namespace {

std::vector<std::string> glCalls; // "create 3", "storage 3 16x8", "upload 3", "delete 3"
GLuint lastName = 0;

// The smallest sound DDS file of the size: one level of DXT1, all zeros.
std::string dds(std::uint32_t width, std::uint32_t height) {
    std::string bytes(128, '\0');
    const auto put = [&](std::size_t at, std::uint32_t number) {
        for (int byte = 0; byte < 4; ++byte) {
            bytes[at + static_cast<std::size_t>(byte)] = static_cast<char>(number >> (8 * byte) & 0xffu);
        }
    };
    put(0, 0x20534444);
    put(4, 124);
    put(12, height);
    put(16, width);
    put(28, 1);
    put(76, 32);
    bytes.replace(84, 4, "DXT1");
    bytes.append(static_cast<std::size_t>((width + 3) / 4 * ((height + 3) / 4) * 8), '\0');
    return bytes;
}

class CatalogTest : public testing::Test {
protected:
    CatalogTest() {
        resetProgram();
        glCalls.clear();
        lastName = 0;
        glCreateTextures = [](GLenum, GLsizei, GLuint* names) {
            *names = ++lastName;
            glCalls.push_back("create " + std::to_string(lastName));
        };
        glTextureStorage2D = [](GLuint name, GLsizei, GLenum, GLsizei width, GLsizei height) {
            glCalls.push_back("storage " + std::to_string(name) + " " + std::to_string(width) + "x" +
                              std::to_string(height));
        };
        glCompressedTextureSubImage2D = [](GLuint name, GLint, GLint, GLint, GLsizei, GLsizei, GLenum,
                                           GLsizei, const void*) {
            glCalls.push_back("upload " + std::to_string(name));
        };
        glDeleteTextures = [](GLsizei, const GLuint* names) {
            glCalls.push_back("delete " + std::to_string(*names));
        };
        for (char letter = 'A'; letter <= 'Z'; ++letter) {
            folder.write(std::string("AssetsCompressed/Font/") + letter + ".dds",
                         dds(4u * static_cast<std::uint32_t>(letter - 'A' + 1), 4));
        }
        folder.write("sun.dds", dds(16, 8));
        folder.write("moon.dds", dds(32, 8));
    }
    ~CatalogTest() override { resetProgram(); }

    ScratchFolder folder;
};

TEST_F(CatalogTest, LoadsImagesInTheOrderOfTheFileThenTheGlyphs) {
    folder.write("images_compressed.json5", "{zenith: 'sun.dds', afterglow: 'moon.dds'}");
    writable::assetCatalog.loadAll();
    ASSERT_EQ(pictures.imageTable.size(), 2u);
    EXPECT_EQ(imageByKey("zenith").name, 1u);
    EXPECT_EQ(imageByKey("zenith").width, 16u);
    EXPECT_EQ(imageByKey("zenith").height, 8u);
    EXPECT_EQ(imageByKey("afterglow").name, 2u);
    EXPECT_EQ(imageByKey("afterglow").width, 32u);
    EXPECT_EQ(lastName, 28u);
}

TEST_F(CatalogTest, TheGlyphTableHoldsTheLettersAToZ) {
    writable::assetCatalog.loadAll();
    ASSERT_EQ(pictures.glyphTable.size(), 26u);
    for (std::size_t letter = 0; letter < writable::pictures.glyphTable.size(); ++letter) {
        EXPECT_EQ(pictures.glyphTable[letter].name, letter + 1);
        EXPECT_EQ(pictures.glyphTable[letter].width, 4 * (letter + 1));
    }
}

TEST_F(CatalogTest, AMissingGlyphStopsTheGame) {
    std::filesystem::remove("AssetsCompressed/Font/Z.dds");
    try {
        writable::assetCatalog.loadAll();
        FAIL() << "the game went on";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("AssetsCompressed/Font/Z.dds"));
    }
}

TEST_F(CatalogTest, AMissingPictureStopsTheGameWithItsFileAndItsKey) {
    folder.write("images_compressed.json5", "{zenith: 'sun.dds', afterglow: 'dusk.dds'}");
    try {
        writable::assetCatalog.loadAll();
        FAIL() << "the game went on";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(),
                    testing::AllOf(testing::HasSubstr("\"dusk.dds\""), testing::HasSubstr("\"afterglow\""),
                                   testing::HasSubstr("images_compressed.json5")));
    }
}

TEST_F(CatalogTest, ANumberOutOfRangeStopsTheGameWithItsFileAndItsKey) {
    folder.write("recipes.json5", "{crate: {_type: 'Object', size: 1e9999}}");
    try {
        writable::assetCatalog.loadAll();
        FAIL() << "the game went on";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), testing::AllOf(testing::HasSubstr("recipes.json5:1:33"),
                                                 testing::HasSubstr("\"crate.size\"")));
    }
}

TEST_F(CatalogTest, AnImageThatIsNoStringIsLookedForUnderAnEmptyPath) {
    static std::vector<JsonKind> wantedKinds;
    wantedKinds.clear();
    jsonKindMismatchHandler = [](const JsonValue&, JsonKind wanted) { wantedKinds.push_back(wanted); };
    folder.write("images_compressed.json5", "{sun: 5}");
    EXPECT_THROW(writable::assetCatalog.loadAll(), FatalError);
    resetJsonKindMismatchHandler();
    EXPECT_THAT(wantedKinds, testing::ElementsAre(JsonKind::String));
}

TEST_F(CatalogTest, KeepsRecipesAndPrefabs) {
    folder.write("recipes.json5", "{crate: {_type: 'Object'}, barrel: {_type: 'Movable'}}");
    folder.write("prefabs.json5", "{pair: [{recipe: 'crate'}]}");
    writable::assetCatalog.loadAll();
    EXPECT_EQ(assetCatalog.recipes.size(), 2u);
    ASSERT_TRUE(assetCatalog.recipes.contains("crate"));
    EXPECT_EQ(assetCatalog.recipes.find("barrel")->get("_type").stringValue(), "Movable");
    ASSERT_TRUE(assetCatalog.prefabs.contains("pair"));
    EXPECT_EQ(assetCatalog.prefabs.find("pair")->arrayValue().size(), 1u);
}

TEST_F(CatalogTest, ASecondLoadReplacesTheWholeTables) {
    folder.write("recipes.json5", "{crate: {_type: 'Object'}, barrel: {}}");
    folder.write("prefabs.json5", "{pair: [1], row: []}");
    writable::assetCatalog.loadAll();
    folder.write("recipes.json5", "{crate: {_type: 'Movable'}}");
    folder.write("prefabs.json5", "{pair: [1, 2]}");
    writable::assetCatalog.loadAll();
    EXPECT_EQ(assetCatalog.recipes.size(), 1u);
    EXPECT_EQ(assetCatalog.recipes.find("crate")->get("_type").stringValue(), "Movable");
    EXPECT_EQ(assetCatalog.prefabs.size(), 1u);
    EXPECT_EQ(assetCatalog.prefabs.find("pair")->arrayValue().size(), 2u);
}

TEST_F(CatalogTest, MissingAndMalformedFilesGiveEmptyOrPartialTables) {
    folder.write("images_compressed.json5", "[1, 2]");
    folder.write("recipes.json5", "{crate: {_type: 'Object'}, barrel: ");
    writable::assetCatalog.loadAll();
    EXPECT_TRUE(pictures.imageTable.empty());
    EXPECT_TRUE(assetCatalog.recipes.contains("crate"));
    EXPECT_TRUE(assetCatalog.prefabs.empty());
}

TEST_F(CatalogTest, ReleaseDeletesImagesInTheirOrderThenGlyphsAndForgetsAll) {
    folder.write("images_compressed.json5", "{zenith: 'sun.dds', afterglow: 'moon.dds'}");
    folder.write("recipes.json5", "{crate: {}}");
    writable::assetCatalog.loadAll();
    glCalls.clear();
    writable::assetCatalog.releaseAll();
    ASSERT_EQ(glCalls.size(), 28u);
    for (std::size_t number = 0; number < glCalls.size(); ++number) {
        EXPECT_EQ(glCalls[number], "delete " + std::to_string(number + 1));
    }
    EXPECT_TRUE(pictures.imageTable.empty());
    EXPECT_TRUE(assetCatalog.recipes.empty());
    for (const Texture2D& glyph : writable::pictures.glyphTable) {
        EXPECT_EQ(glyph.name, 0u);
        EXPECT_EQ(glyph.width, 0u);
    }
}

TEST_F(CatalogTest, ResetForgetsWithoutTouchingOpenGl) {
    folder.write("images_compressed.json5", "{sun: 'sun.dds'}");
    writable::assetCatalog.loadAll();
    glCalls.clear();
    resetProgram();
    EXPECT_TRUE(glCalls.empty());
    EXPECT_TRUE(pictures.imageTable.empty());
}

} // namespace

} // namespace dunkman
