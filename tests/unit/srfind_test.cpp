// The whole program in this process: its status, its hits, what it tells on stderr.
#include <algorithm>

#include "host/srsample/sample_document.h"
#include "tests/unit/search_fixture.h"
#include "tests/unit/srfind_run.h"

namespace {

class SrfindTest : public SearchTest {
protected:
    SrfindTest() {
        Tree({"sub/notes.txt", "sub/data.xyz"});
        for (const char* file : {"B.hpa", "a.hpa", "sub/C.hpa"})
            Document(file, nullptr);
        Document(
            "titled.hpa", nullptr,
            [](PropertySectionWriter& set) {
                set.AddReal(2, 4.5);
                set.AddName(2, TEXT("Mass"));
                set.AddText(3, TEXT("Miller"));
                set.AddName(3, TEXT("Supplier"));
            },
            [](PropertySectionWriter& set) { set.AddText(2, TEXT("Bracket")); });
    }

    // "@" stands for the folder. The paths in the output begin with "@/".
    SrfindRun Run(std::vector<std::string> arguments) {
        for (std::string& each : arguments) {
            if (each == "@") each = folder_.string();
        }
        SrfindRun run = RunSrfind(arguments);
        Shorten(run.out);
        Shorten(run.err);
        return run;
    }
    // The file's name as the program prints and reads it.
    std::string Path(const std::string& file) const { return DisplayPath(Wide(file)); }
    std::string List(const std::string& text) {
        WriteFile("list.lst", {text.begin(), text.end()});
        return (folder_ / "list.lst").string();
    }

private:
    void Shorten(std::string& text) const {
        const std::string root = DisplayPath(Wide(""));
        for (std::size_t at = 0; (at = text.find(root, at)) != std::string::npos; ++at)
            text.replace(at, root.size(), "@");
        std::replace(text.begin(), text.end(), '\\', '/');
    }
};

TEST_F(SrfindTest, StatusHitsAndMessages) {
    struct Row {
        std::vector<std::string> arguments;
        int status;
        const char* out;
        const char* errPart;  // null: nothing is told
    };
    const std::string tooLong = "Title contains " + std::string(128, 'v');
    const Row rows[] = {
        {{"--sort=name", "@"}, 0, "@/a.hpa\n@/B.hpa\n@/titled.hpa\n", nullptr},
        {{"-r", "--sort", "name", "-w", "File name ends with .hpa", "@"},
         0,
         "@/a.hpa\n@/B.hpa\n@/sub/C.hpa\n@/titled.hpa\n",
         nullptr},
        {{"-r", "--sort=folder", "-w", "File name ends with .hpa", "@"},
         0,
         "@/a.hpa\n@/B.hpa\n@/titled.hpa\n@/sub/C.hpa\n",
         nullptr},
        {{"-w", "File name equals b", "@"}, 0, "@/B.hpa\n", nullptr},
        {{"-c", "-w", "File name equals b", "@"}, 1, "", "No files were found."},
        {{"-w", "Title contains brack", "@"}, 0, "@/titled.hpa\n", nullptr},
        {{"-r", "-w", "Title contains brack", "@"},
         0,
         "@/titled.hpa\n",
         "1 file(s) were passed over by their type"},
        {{"--json", "-w", "File name equals a", "@"}, 0, nullptr, nullptr},
        {{"--json", "-0", "@"}, 2, "", "--print0 can't hold"},
        {{"--print0", "--sort=name", "-w", "File name equals a", "-o", "File name equals b", "@"},
         0,
         "@/a.hpa|@/B.hpa|",
         nullptr},
        {{"-w", "File name equals a", "-w", "Component adaptive is set to yes", "@"},
         0,
         "@/a.hpa\n",
         "'Component adaptive is set to yes' can't be decided by the file for 1 of the 1 hit(s)"},
        {{"-w", "\"Supplier\" equals miller", "@"}, 0, "@/titled.hpa\n", nullptr},
        {{"-w", "\"Supplier\" is greater than 4", "@"}, 1, "", "No files"},
        {{"-w", "\"Mass\" is greater than 4", "-w", "\"Mass\" has a value", "@"},
         0,
         "@/titled.hpa\n",
         nullptr},
        {{"--sort=name", "-w", "\"Mass\" is empty", "@"}, 0, "@/a.hpa\n@/B.hpa\n", nullptr},
        {{"--help"}, 0, nullptr, nullptr},
        {{"--version"}, 0, "srfind 1.0.0\n", nullptr},
        {{}, 2, "", "no place to look in"},
        {{"--related", "@"}, 2, "", "\"@\" is no document to start with"},
        {{"-w", "Title contains x", "-w", "File type is Import files", "@"},
         2,
         "",
         "The criterion does not fit the file types"},
        {{"-w", "Titel contains x", "@"}, 2, "", "the nearest are \"Title\""},
        {{"-w", tooLong, "@"}, 2, "", "128 characters"},
        {{"no-such-folder"}, 2, "", "\"no-such-folder\" is no folder"},
        {{"--files-from", "no-such-list"}, 2, "", "the list of files could not be read"},
    };
    for (const Row& row : rows) {
        SrfindRun run = Run(row.arguments);
        SCOPED_TRACE(row.arguments.empty() ? "nothing" : row.arguments[0] + " " + run.err);
        std::replace(run.out.begin(), run.out.end(), '\0', '|');
        EXPECT_EQ(row.status, run.status);
        if (row.out != nullptr) {
            EXPECT_EQ(row.out, run.out);
        }
        if (row.errPart == nullptr) {
            EXPECT_EQ("", run.err);
        } else {
            EXPECT_NE(std::string::npos, run.err.find(row.errPart));
        }
    }
    EXPECT_EQ(0, objectCount);
}

TEST_F(SrfindTest, ListsTheCriteria) {
    const SrfindRun run = Run({"--criteria"});
    EXPECT_EQ(0, run.status);
    for (const char* line :
         {"\n19140:1  Title\n    21706  has any value\n", "\n    21721  contains  <text>\n",
          "\n19252:12  Note text\n", "\n    21741  falls on  <date>\n",
          "\n    21715  is equal to  <one of: Work in progress, Pending, Released>\n",
          "\n    21725  equals  <one of: the caller's names>\n",
          "\n19221:11  Degrees of freedom\n    21734  is less than  <whole number>\n"}) {
        EXPECT_NE(std::string::npos, run.out.find(line)) << line;
    }
    std::size_t properties = 0;
    for (std::size_t at = 0; at < run.out.size(); at = run.out.find('\n', at) + 1)
        properties += run.out[at] != ' ' ? 1 : 0;
    EXPECT_EQ(85u, properties);
}

TEST_F(SrfindTest, FilesFromAList) {
    const auto run = [this](const std::string& text) {
        return Run({"-w", "File name contains .hpa", "--files-from", List(text)});
    };
    // Once each, in the order of the list; empty lines count for nothing.
    const SrfindRun good = run("\n" + Path("B.hpa") + "\n\n" + Path("a.hpa") + "\n" +
                               Path("B.hpa") + "\n" + Path("sub/notes.txt"));
    EXPECT_EQ(0, good.status);
    EXPECT_EQ("@/B.hpa\n@/a.hpa\n", good.out);
    EXPECT_EQ("", good.err);
    const SrfindRun missing =
        run(Path("gone.hpa") + "\n" + Path("a.hpa") + "\n" + Path("sub") + "\n");
    EXPECT_EQ(3, missing.status);
    EXPECT_EQ("@/a.hpa\n", missing.out);
    EXPECT_EQ("srfind: @/gone.hpa is not there\nsrfind: @/sub is a folder, not a file\n",
              missing.err);
    const SrfindRun none = run("");
    EXPECT_EQ(1, none.status);
    EXPECT_EQ("", none.out);
    const SrfindRun binary = run(Path("a.hpa") + "\n" + std::string("b\0c", 3) + "\n");
    EXPECT_EQ(2, binary.status);
    EXPECT_NE(std::string::npos, binary.err.find("line 2 of the list"));
}

TEST_F(SrfindTest, MissingReferencesOfOneDocumentAreCounted) {
    SampleDocument document;
    document.kind = eSampleKind::Assembly;
    document.references.assign(103, {TEXT("gone.hpa"), TEXT("")});
    WriteFile("many.hsb", BuildDocument(document));
    const SrfindRun run = Run({"--related", Path("many.hsb")});
    EXPECT_EQ("@/many.hsb\n", run.out);
    std::string wanted;
    for (int i = 0; i < 100; ++i)
        wanted += "srfind: @/gone.hpa is not there, though @/many.hsb refers to it\n";
    EXPECT_EQ(wanted + "srfind: and 3 more of those that @/many.hsb refers to\n", run.err);
}

TEST_F(SrfindTest, SavedSearches) {
    const struct {
        std::vector<std::string> arguments;
        int status;
        const char* out;
        const char* errPart;  // null: nothing is told
    } kRows[] = {
        {{"--searches"}, 0, "", nullptr},
        {{"--save", "two words", "-w", "File name equals a", "-o", "File name equals b"},
         0,
         "",
         nullptr},
        {{"--searches"}, 0, "two words\n", nullptr},
        {{"--sort=name", "--open", "TWO words", "@"}, 0, "@/a.hpa\n@/B.hpa\n", nullptr},
        {{"--open=two words", "-w", "File name contains b", "@"}, 0, "@/B.hpa\n", nullptr},
        {{"--open=two words", "-c", "@"}, 0, "@/a.hpa\n", nullptr},
        {{"--open", "none", "@"}, 2, "", "there is no saved search \"none\""},
        {{"--save", "two words", "-w", "File name equals b"}, 2, "", "Give --yes to agree"},
        {{"--open=two words", "-w", "File name equals x", "@"}, 1, "", "No files were found"},
        {{"-y", "--save", "two words", "-w", "File name equals b"}, 0, "", nullptr},
        {{"--open", "two words", "@"}, 0, "@/B.hpa\n", nullptr},
        {{"--save", "two\\words", "-w", "File name equals b"}, 2, "", "can't have a backslash"},
        {{"--save", std::string(300, 'n'), "-w", "File name equals b"}, 2, "", "characters"},
        {{"--delete", "two words"}, 2, "", "Give --yes to agree"},
        {{"--delete", "two words", "--yes"}, 0, "", nullptr},
        {{"--delete", "two words", "--yes"}, 2, "", "there is no saved search"},
        {{"--searches"}, 0, "", nullptr},
    };
    for (const auto& row : kRows) {
        const SrfindRun run = Run(row.arguments);
        SCOPED_TRACE(row.arguments[0] + " " + run.err);
        EXPECT_EQ(row.status, run.status);
        EXPECT_EQ(row.out, run.out);
        EXPECT_EQ(row.errPart == nullptr, run.err.empty());
        if (row.errPart != nullptr) {
            EXPECT_NE(std::string::npos, run.err.find(row.errPart));
        }
    }
}

// What a caller that looks inside an assembly reads of a hit.
TEST_F(SrfindTest, RecordsAndSkippedCriteria) {
    const std::string list = List(Path("titled.hpa") + "\n");
    const SrfindRun run =
        Run({"--files-from", list, "--records", "--skipped", "-w", "File type is Parts", "-w",
             "Component name contains bolt", "-o", "Component visible is set to no", "-c"});
    EXPECT_EQ(0, run.status);
    EXPECT_EQ(
        "@/titled.hpa\n"
        "\t{\"join\":\"and\",\"holds\":true}\n"
        "\t{\"join\":\"and\",\"test\":\"component name\",\"condition\":21721,"
        "\"matchCase\":true,\"text\":\"bolt\",\"number\":0,\"flag\":false}\n"
        "\t{\"join\":\"or\",\"test\":\"component visible\",\"condition\":0,"
        "\"matchCase\":false,\"text\":\"\",\"number\":0,\"flag\":false}\n",
        run.out);
    EXPECT_NE(std::string::npos, run.err.find("can't be decided by the file"));
    EXPECT_NE(std::string::npos, run.err.find("left to the caller: and file type 5\n"
                                              "left to the caller: and a criterion\n"
                                              "left to the caller: or a criterion\n"))
        << run.err;
    const SrfindRun json = Run({"--files-from", list, "--records", "--json", "--skipped", "-w",
                                "File type is Assemblies", "-o", "File name equals titled"});
    EXPECT_NE(std::string::npos, json.out.find(",\"records\":[{\"join\":\"and\",\"holds\":false},"
                                               "{\"join\":\"or\",\"holds\":true}]}"))
        << json.out;
    EXPECT_EQ("left to the caller: and file type 2\nleft to the caller: or a criterion\n",
              json.err);
}

TEST_F(SrfindTest, NamesWhatIsDamagedAndCounts) {
    const std::string damaged = "srfind: @/odd.hpa is damaged\n";
    Document(
        "odd.hpa", [](PropertySectionWriter& set) { set.AddNumber(5, 1), set.AddNumber(5, 2); },
        nullptr, [](PropertySectionWriter& set) { set.AddText(2, TEXT("Odd")); });
    const SrfindRun sound = Run({"-r", "-w", "Title contains odd", "@"});
    EXPECT_EQ(0, sound.status) << sound.err;
    const SrfindRun asked = Run({"-r", "-w", "Title contains odd", "-o", "Material equals x", "@"});
    EXPECT_EQ(3, asked.status);
    EXPECT_EQ("@/odd.hpa\n", asked.out);
    EXPECT_NE(std::string::npos, asked.err.find(damaged)) << asked.err;

    WriteFile("cut.hpa", {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1, 0, 0});
    const SrfindRun run = Run({"-r", "--stats", "-w", "Title contains brack", "@"});
    EXPECT_EQ(3, run.status);
    EXPECT_EQ("@/titled.hpa\n", run.out);
    EXPECT_NE(std::string::npos, run.err.find("srfind: @/cut.hpa is damaged\n"));
    for (const char* line :
         {"files looked at        8\n", "property sets read     7\n", "without property sets  1\n",
          "passed over by type    1\n", "hits                   1\n", "unreadable files       1\n",
          "unreadable folders     0\n"}) {
        EXPECT_NE(std::string::npos, run.err.find(line)) << line << run.err;
    }
}

}  // namespace
