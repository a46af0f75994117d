#include "render/shader_preprocessor.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "base/fatal.h"
#include "tests/fakes/fake_debugger.h"

namespace dunkman {
namespace {

// Files in memory, with a list of what was read.
class IncludeExpansion : public testing::Test {
protected:
    std::string expand(const std::string& path) {
        IncludeCache cache;
        return expandIncludes(path, cache, [this](const std::string& name) {
            reads.push_back(name);
            return files.at(name);
        });
    }

    std::string expandText(const std::string& text) {
        files["main"] = text;
        return expand("main");
    }

    std::string failureOf(const std::string& path) {
        try {
            expand(path);
        } catch (const FatalError& error) {
            return error.what();
        }
        return "no failure";
    }

    std::map<std::string, std::string> files = {{"a", "A"}, {"b", "B"}};
    std::vector<std::string> reads;
};

TEST_F(IncludeExpansion, LeavesTextWithoutDirectivesAsItIs) {
    EXPECT_EQ(expandText("void main() { }\r\n\n/* c */ // d"), "void main() { }\r\n\n/* c */ // d");
    EXPECT_EQ(expandText(""), "");
}

TEST_F(IncludeExpansion, PutsTheFileInPlaceOfTheDirective) {
    EXPECT_EQ(expandText("1\n#include \"a\"\n2"), "1\nA\n2");
}

TEST_F(IncludeExpansion, TakesADirectiveAfterCodeOnItsLine) {
    EXPECT_EQ(expandText("x;#include \"a\""), "x;A");
}

TEST_F(IncludeExpansion, KeepsTextBehindTheClosingQuote) {
    EXPECT_EQ(expandText("#include \"a\" tail\n"), "A tail\n");
}

TEST_F(IncludeExpansion, ExpandsDirectivesThatTouchEachOther) {
    EXPECT_EQ(expandText("#include \"a\"#include \"b\""), "AB");
}

TEST_F(IncludeExpansion, InsertsAFileAgainAtEveryDirectiveButReadsItOnce) {
    EXPECT_EQ(expandText("#include \"a\"\n#include \"a\"\n"), "A\nA\n");
    EXPECT_THAT(reads, testing::ElementsAre("main", "a"));
}

TEST_F(IncludeExpansion, IgnoresDirectivesInLineComments) {
    EXPECT_EQ(expandText("// #include \"a\"\n#include \"b\""), "// #include \"a\"\nB");
}

TEST_F(IncludeExpansion, IgnoresDirectivesInBlockComments) {
    EXPECT_EQ(expandText("/* #include \"a\"\n*/#include \"b\""), "/* #include \"a\"\n*/B");
}

TEST_F(IncludeExpansion, EndsALineCommentAtEitherLineEnd) {
    EXPECT_EQ(expandText("//c\r#include \"a\""), "//c\rA");
    EXPECT_EQ(expandText("//c\r\n#include \"a\""), "//c\r\nA");
}

TEST_F(IncludeExpansion, EndsWithALineCommentThatHasNoLineEnd) {
    EXPECT_EQ(expandText("#include \"a\"// #include \"b\""), "A// #include \"b\"");
}

TEST_F(IncludeExpansion, DoesNotCloseABlockCommentWithItsOwnStar) {
    EXPECT_EQ(expandText("/*/ #include \"a\" */#include \"b\""), "/*/ #include \"a\" */B");
}

TEST_F(IncludeExpansion, DoesNotOpenABlockCommentWithinALineComment) {
    EXPECT_EQ(expandText("//*\n#include \"a\""), "//*\nA");
}

TEST_F(IncludeExpansion, TakesNoOtherSpellingForADirective) {
    for (const std::string text :
         {"#include <a>", "#include\t\"a\"", "#include  \"a\"", "# include \"a\"", "#include"}) {
        EXPECT_EQ(expandText(text), text);
    }
}

TEST_F(IncludeExpansion, LooksInTheFolderOfTheIncludingFile) {
    files["shaders/one.vert"] = "#include \"parts/two.glsl\"";
    files["shaders/parts/two.glsl"] = "#include \"three.glsl\" #include \"../four.glsl\"";
    files["shaders/parts/three.glsl"] = "3";
    files["shaders/four.glsl"] = "4";
    EXPECT_EQ(expand("shaders/one.vert"), "3 4");
}

TEST_F(IncludeExpansion, CachesUnderThePathAsFormed) {
    files["main"] = "#include \"a\"";
    IncludeCache cache;
    expandIncludes("main", cache, [this](const std::string& name) { return files.at(name); });
    EXPECT_EQ(cache.at("main\\..\\a"), "A");
    EXPECT_EQ(cache.at("main"), "A");
}

TEST_F(IncludeExpansion, StopsAtACommentThatIsNeverClosed) {
    files["b"] = "/* no end";
    files["main"] = "#include \"b\"";
    EXPECT_THAT(failureOf("main"),
                testing::AllOf(testing::HasSubstr("\"b\""), testing::HasSubstr("never closed")));
    files["main"] = "#include \"a\" x /*";
    EXPECT_THAT(failureOf("main"), testing::HasSubstr("\"main\""));
}

TEST_F(IncludeExpansion, StopsAtADirectiveWithoutClosingQuote) {
    files["main"] = "x\n#include \"a\n";
    EXPECT_THAT(failureOf("main"),
                testing::AllOf(testing::HasSubstr("\"main\""), testing::HasSubstr("quote")));
}

TEST_F(IncludeExpansion, StopsAtAFileThatIncludesItself) {
    files["main"] = "#include \"main\"";
    EXPECT_THAT(failureOf("main"),
                testing::AllOf(testing::HasSubstr("\"main\""), testing::HasSubstr("itself")));
}

TEST_F(IncludeExpansion, StopsAtACycleThroughOtherFolders) {
    files["one"] = "#include \"sub/two\"";
    files["sub/two"] = "#include \"../one\"";
    EXPECT_THAT(failureOf("one"), testing::HasSubstr("\"one\" includes itself"));
}

TEST_F(IncludeExpansion, TakesTwoWaysToOneFileForNoCycle) {
    files["one"] = "#include \"two\"#include \"three\"";
    files["two"] = "#include \"three\"";
    files["three"] = "3";
    EXPECT_EQ(expand("one"), "33");
}

TEST_F(IncludeExpansion, StopsWhenIncludesGrowBeyondAllUse) {
    files["f0"] = std::string(64, 'x');
    std::string previous = "f0";
    for (int level = 1; level <= 32; ++level) {
        const std::string name = "f" + std::to_string(level);
        files[name] = "#include \"" + previous + "\"#include \"" + previous + "\"";
        previous = name;
    }
    EXPECT_THAT(failureOf(previous), testing::HasSubstr("1 MiB"));
}

TEST(ReducedIncludePath, DropsTheFileNameBeforeAParentStep) {
    EXPECT_EQ(reducedIncludePath("shaders\\a.vert\\..\\b.glsl"), "shaders/b.glsl");
    EXPECT_EQ(reducedIncludePath("a.vert\\..\\b.glsl\\..\\c.glsl"), "c.glsl");
    EXPECT_EQ(reducedIncludePath("a.vert\\..\\sub\\b.glsl\\..\\c.glsl"), "sub/c.glsl");
    EXPECT_EQ(reducedIncludePath("plain.frag"), "plain.frag");
    EXPECT_EQ(reducedIncludePath("sub\\a.vert\\..\\..\\b.glsl"), "b.glsl");
    EXPECT_EQ(reducedIncludePath("a.vert\\..\\../b.glsl"), "../b.glsl");
    EXPECT_EQ(reducedIncludePath("a.vert\\..\\../../b.glsl"), "../../b.glsl");
    EXPECT_EQ(reducedIncludePath("sub/a.vert\\..\\./lib//b.glsl"), "sub/lib/b.glsl");
    EXPECT_EQ(reducedIncludePath("sub/a.vert\\..\\/lib/b.glsl"), "/lib/b.glsl");
    EXPECT_EQ(reducedIncludePath("sub/a.vert\\..\\/../b.glsl"), "/b.glsl");
    EXPECT_EQ(reducedIncludePath("sub/a.vert\\..\\C:/lib/b.glsl"), "C:/lib/b.glsl");
}

class ShaderFile : public testing::Test {
protected:
    ShaderFile() {
        fakeDebugger = {};
        std::filesystem::create_directories(folder);
    }
    ~ShaderFile() override { std::filesystem::remove_all(folder); }

    std::string write(const std::string& name, const std::string& text) {
        const std::filesystem::path path = folder / name;
        std::ofstream(path, std::ios::binary) << text;
        return path.string();
    }

    std::filesystem::path folder = std::filesystem::temp_directory_path() / "dunkman_shader_file_test";
};

TEST_F(ShaderFile, IsReadByteForByte) {
    const std::string text("a\r\nb\n\x1a\0c", 8);
    EXPECT_EQ(readTextFile(write("text", text)), text);
}

TEST_F(ShaderFile, IncludesItsNeighbour) {
    write("part.glsl", "float x;\n");
    EXPECT_EQ(preprocessShaderFile(write("main.vert", "#include \"part.glsl\"\n")), "float x;\n\n");
}

TEST_F(ShaderFile, ThatIsMissingAsksTheDeveloperInAndNamesItself) {
    EXPECT_THROW(preprocessShaderFile("no_such.vert"), FatalError);
    ASSERT_EQ(fakeDebugger.breaks.size(), 1u);
    EXPECT_THAT(fakeDebugger.breaks.front(), testing::HasSubstr("\"no_such.vert\""));
}

TEST_F(ShaderFile, ThatIsMissingIsEmptyWhenTheDeveloperGoesOn) {
    fakeDebugger.developerGoesOn = true;
    EXPECT_EQ(preprocessShaderFile("no_such.vert"), "");
    EXPECT_EQ(preprocessShaderFile(write("main.vert", "1#include \"gone\"2")), "12");
}

} // namespace
} // namespace dunkman
