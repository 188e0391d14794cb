#include "tests/TemporaryFolder.h"
#include "tests/apps/zvi/Run.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/contacts/input/ReadStl.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <bit>
#include <cstdint>
#include <vector>

namespace zvi::app::test {

namespace {

void AddLittleEndian(std::string &bytes, std::uint32_t number) {
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(number >> (8 * i) & 0xff);
}

/// Triangles at heights from 0 on, after a header of this text.
std::string Binary(std::string const &header, std::uint32_t announced, int held) {
    std::string bytes = header + std::string(80 - header.size(), ' ');
    AddLittleEndian(bytes, announced);
    for (int i = 0; i < held; ++i) {
        float const height = static_cast<float>(i);
        for (float const coordinate : {0.f, 0.f, 1.f, 0.f, 0.f, height, 1.f, 0.f, height, 0.f, 1.f, height})
            AddLittleEndian(bytes, std::bit_cast<std::uint32_t>(coordinate));
        bytes += std::string(2, '\0');
    }
    return bytes;
}

std::string Facet(std::string const &height) {
    return "facet normal 0 0 1\n outer loop\n  vertex 0 0 " + height + "\n  vertex 1 0 " + height + "\n  vertex 0 1 " +
           height + "\n endloop\nendfacet\n";
}

std::string Solid(std::string const &name, std::string const &height) {
    return "solid " + name + "\n" + Facet(height) + "endsolid " + name + "\n";
}

} // namespace

TEST(ReadStl, TellsTextFromBytesByWhatIsThere) {
    std::string const mislabelled = Binary("solid of another kind", 3, 3);
    struct Case {
        std::string bytes;
        std::vector<std::size_t> triangles; ///< of each solid
        std::size_t leftOut = 0;
        std::size_t bytesAfter = 0;
    };
    Case const cases[] = {
        {Binary("header", 2, 2), {2}},
        {mislabelled, {3}},
        {mislabelled + "xx", {3}, 0, 2},
        {Binary("", 0, 0), {0}},
        {Solid("a b", "1e-3") + "\n" + Solid("", "+2."), {1, 1}},
        {"\xEF\xBB\xBF  SOLID\r\n" + Facet("nan") + Facet("-1.#IND") + Facet("1e39") + Facet("3") + "EndSolid", {1}, 3},
        {"solid\nendsolid", {0}},
    };
    for (Case const &each : cases) {
        StlFile const file = ReadStl(each.bytes);
        std::vector<std::size_t> triangles;
        for (StlSolid const &solid : file.solids)
            triangles.push_back(solid.triangles.size());
        EXPECT_EQ(triangles, each.triangles) << each.bytes.substr(0, 30);
        EXPECT_EQ(std::pair(file.leftOut, file.bytesAfter), std::pair(each.leftOut, each.bytesAfter));
    }
    EXPECT_EQ(ReadStl(cases[4].bytes).solids[0].name, "a b");
    EXPECT_EQ(ReadStl(mislabelled).solids[0].triangles[2][1], (MVector<double, 3>(1, 0, 2)));
}

TEST(ReadStl, RefusesWhatIsCutOrNoStl) {
    std::pair<std::string, std::string> const cases[] = {
        {"", "0: is empty"},
        {"hello", "0: is no STL file: it is too short"},
        {Binary("solid", 3, 3).substr(0, 200),
         "0: is cut, or is no STL file: it announces 3 triangles and has room for 2"},
        {std::string(100, 'x'), "0: is cut, or is no STL file: it announces 2021161080"},
        {"solid\n" + Facet("1"), "9: the file ends within a solid"},
        {"solid a\nfacet normal 0 0", "2: the file ends within a solid"},
        {"solid a\nfacet\ncorner", "3: \"corner\" stands where the normal of a facet (\"normal\") should be"},
        {Solid("", "1x"), "4: \"1x\" stands where a coordinate should be"},
        {Solid("a", "1") + "x", "10: \"x\" stands where a solid"},
        {"solid\nfacet normal 0 0 1 outer loop vertex 0 0 0 vertex 0 0 0 vertex 0 0 0 vertex", "2: \"vertex\" stands"},
    };
    for (auto const &[bytes, failure] : cases) {
        try {
            ReadStl(bytes);
            ADD_FAILURE() << "no failure: " << failure;
        } catch (InputError const &error) {
            EXPECT_EQ((std::to_string(error.Line()) + ": " + error.what()).substr(0, failure.size()), failure);
        }
    }
}

TEST(Contacts, OfTheSolidsOfOneFile) {
    std::string const three = Solid("low", "0") + Solid("middle", "0.5") + Solid("high", "2");
    RunOutcome const table = RunZvi({"contacts", "--tolerance", "0.5"}, three);
    EXPECT_EQ(table.status, 0);
    EXPECT_EQ(table.out, "body                body                   pairs  smallest gap  patches      areas\n"
                         "standard input:low  standard input:middle      1           0.5        1  0.5 / 0.5\n");
    EXPECT_EQ(table.err, "zvi: standard input: read 3 bodies of 3 triangles\n"
                         "zvi: the smallest gap is the smallest among pairs of triangles within 0.5\n");
    RunOutcome const none = RunZvi({"contacts", "--tolerance=0"}, three);
    EXPECT_EQ(none.out, "");
    EXPECT_TRUE(none.err.ends_with("zvi: no two bodies have triangles within 0 of each other\n")) << none.err;
    RunOutcome const one = RunZvi({"contacts", "-", "--tolerance", "1", "--json"}, Solid("a", "0"));
    EXPECT_EQ(one.out, "{\"schema\":1,\"tolerance\":1.0,\"bodies\":[{\"name\":\"standard input\",\"triangles\":1}],"
                       "\"contacts\":[]}\n");
    RunOutcome const cut = RunZvi({"contacts", "--tolerance", "1"}, three.substr(0, 100));
    EXPECT_EQ(cut.status, 1);
    EXPECT_TRUE(cut.err.starts_with("zvi: standard input:8: the file ends within a solid")) << cut.err;
}

TEST(Contacts, GoToJsonAndToAPictureForOtherPrograms) {
    zvi::test::TemporaryFolder const folder;
    std::string const file = folder.Native("part.stl").string();
    std::string const obj = folder.Native("patches.obj").string();
    folder.Write("part.stl", Binary("header", 4, 4));
    RunOutcome const run =
        RunZvi({"contacts", file, "-", "--tolerance", "0.25", "--json", "--obj", obj}, Solid("other part", "2.25"));
    EXPECT_EQ(run.status, 0) << run.err;
    nlohmann::json const json = nlohmann::json::parse(run.out);
    EXPECT_EQ(json["bodies"][0]["name"], "part");
    nlohmann::json const &contact = json["contacts"][0];
    EXPECT_EQ(contact["pairs"], 1);
    EXPECT_EQ(contact["smallestGap"], 0.25);
    EXPECT_EQ(contact["patches"][0]["triangles"], nlohmann::json::parse("[[2],[0]]"));
    EXPECT_EQ(folder.Read("patches.obj"),
              "# Patches of contact within 0.25\n"
              "g part--standard_input.1.part\nv 0 0 2\nv 1 0 2\nv 0 1 2\nf -3 -2 -1\n"
              "g part--standard_input.1.standard_input\nv 0 0 2.25\nv 1 0 2.25\nv 0 1 2.25\nf -3 -2 -1\n");
    EXPECT_EQ(RunZvi({"contacts", file, "--tolerance", "1", "--obj", file}).status, 2);
    EXPECT_EQ(RunZvi({"contacts", folder.Native("none.stl").string(), "--tolerance", "1"}).status, 1);
}

TEST(Contacts, RefusesWrongUsage) {
    for (char const *words : {"", "--tolerance -1", "--tolerance nan", "--tolerance 1 --obj -", "--tolerance 1 - -",
                              "--tolerance 1 --strict"}) {
        std::istringstream stream(std::string("contacts ") + words);
        std::vector<std::string> const arguments(std::istream_iterator<std::string>(stream), {});
        EXPECT_EQ(RunZvi(arguments, "solid\nendsolid\n").status, 2) << words;
    }
}

} // namespace zvi::app::test
