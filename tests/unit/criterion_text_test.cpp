// Criteria and options as a person types them: what they become, and what is said of bad ones.
#include "host/srfind/criterion_text.h"

#include <gtest/gtest.h>

#include "host/srfind/options.h"
#include "module/module_state.h"
#include "platform/host/host_files.h"

namespace {

TEST(CriterionText, Good) {
    struct Row {
        std::string text;
        std::string fields;  // string id, number, category, condition, value id, custom name, value
    };
    const std::string longest(127, 'v');
    const Row rows[] = {
        {"Title contains bracket", "19140 22 1 21721 -1 '' 'bracket'"},
        {"  tITLE   CONTAINS bracket", "19140 22 1 21721 -1 '' 'bracket'"},
        {"Title contains  two  blanks ", "19140 22 1 21721 -1 '' ' two  blanks '"},
        {"Title contains Gr\xC3\xB6\xC3\x9F", "19140 22 1 21721 -1 '' 'Gr\xC3\xB6\xC3\x9F'"},
        {"Title contains " + longest, "19140 22 1 21721 -1 '' '" + longest + "'"},
        {"Title equals", "19140 22 1 21725 -1 '' ''"},
        {"Title differs from", "19140 22 1 21729 -1 '' ''"},
        {"19140 21721 bracket", "19140 22 1 21721 -1 '' 'bracket'"},
        {"19140:1 contains bracket", "19140 22 1 21721 -1 '' 'bracket'"},
        {"Title equals 21721 bracket", "19140 22 1 21725 -1 '' '21721 bracket'"},
        {"\"Title\" contains x", "19140 22 1 21721 -1 '' 'x'"},
        {"Note text includes the words x", "19252 125 11 21710 -1 '' 'x'"},
        {"19252:12 includes the words x", "19252 125 12 21710 -1 '' 'x'"},
        {"Weld note text leaves out the words x", "19266 130 13 21712 -1 '' 'x'"},
        {"Date checked falls on 2024-03-07", "19130 11 1 21741 -1 '' '2024 3 7'"},
        {"Date checked is on or after 1601-01-01", "19130 11 1 21742 -1 '' '1601 1 1'"},
        {"Date checked is today", "19130 11 1 21755 -1 '' ''"},
        {"Date of engineering approval is in last week", "19131 13 1 21733 -1 '' ''"},
        {"Author is the signed-in user", "19133 3 1 21726 -1 '' ''"},
        {"File type is Models (parts and assemblies)", "19146 100 7 21747 -1 '' ''"},
        {"File type is 21746", "19146 100 7 21746 -1 '' ''"},
        {"File name ends with .hpa", "19151 101 7 21714 -1 '' '.hpa'"},
        {"Estimated cost is less than -1.5e3", "19180 36 1 21734 -1 '' '-1.5e3'"},
        {"Degrees of freedom is greater than 3", "19221 113 11 21718 -1 '' '3'"},
        {"Design state is equal to released", "19186 40 1 21715 -1 '' 'Released'"},
        {"Design state is equal to 19216", "19186 40 1 21715 -1 '' 'Released'"},
        {"Component suppressed is equal to YES", "19293 127 11 21715 19239 '' 'Yes'"},
        {"Constraint type is not equal to Angle", "19242 123 12 21738 19244 '' 'Angle'"},
        {"Component colour equals polished Gold", "19223 114 11 21725 -1 '' 'polished Gold'"},
        {"Document origin is not a parts library", "19217 108 7 21737 -1 '' ''"},
        {"\"Supplier\" equals Miller", "-1 -1 3 21725 -1 'Supplier' 'Miller'"},
        {"\"Titles\" contains x", "-1 -1 3 21721 -1 'Titles' 'x'"},
        {"\"12\" is greater than 3", "-1 -1 3 21718 -1 '12' '3'"},
        {"\"Paint\" is set to yes", "-1 -1 3 21731 -1 'Paint' ''"},
        {"\"SPARE part\" is set to no", "-1 -1 3 21728 -1 'SPARE part' ''"},
        {"\"Delivered\" falls on 2024-02-29", "-1 -1 3 21741 -1 'Delivered' '2024 2 29'"},
    };
    const CriterionParser parser(SrResReturnHandle());
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        std::string fault;
        const auto node = parser.Parse(row.text, JOIN_OR, fault);
        ASSERT_NE(nullptr, node) << fault;
        EXPECT_EQ(JOIN_OR, node->joinType);
        std::string fields;
        for (const LONG field : {node->propertyStringId, node->propertyNumber,
                                 node->propertyCategory, node->conditionId, node->valueId}) {
            fields += std::to_string(field) + " ";
        }
        EXPECT_EQ(row.fields, fields + "'" + wtext::ToUtf8(node->customName) + "' '" +
                                  wtext::ToUtf8(node->value) + "'");
    }
}

TEST(CriterionText, Bad) {
    struct Row {
        std::string text;
        const char* part;  // of the message
    };
    const Row rows[] = {
        {"", "no property has a name that begins \"\""},
        {"Titel contains x", "the nearest are \"Title\""},
        {"Titlecontains x", "no property has a name that begins \"Titlecontains x\""},
        {"\"Supplier equals x", "no closing quote"},
        {"\"\" equals x", "no property has a name"},
        {std::string("\"\0a\" equals x", 13), "no null characters"},
        {"Title", "\"Title\" has no condition behind it; it can take \"has any value\""},
        {"\"Supplier\"", "\"Supplier\" has no condition behind it"},
        {"Title resembles x", "no condition that begins \"resembles x\""},
        {"Title containsx y", "no condition that begins \"containsx y\""},
        {"Title 21734 5", "no condition that begins \"21734 5\""},
        {"File type is Widgets", "no condition that begins \"Widgets\""},
        {"\"Spare part\" contains x", "it can take \"is set to yes\", \"is set to no\""},
        {"99999 contains x", "there is no property 99999"},
        {"19140:2 contains x", "there is no property 19140:2"},
        {"19140:x contains x", "there is no property 19140:x"},
        {"Title contains", "needs a value behind it"},
        {"Author is empty now", "takes no value, but \"now\" stands behind it"},
        {"Date checked falls on", "needs a date like 2024-03-07"},
        {"Date checked falls on 2024-02-30", "\"2024-02-30\" is no date"},
        {"\"Delivered\" falls on soon", "\"soon\" is no date"},
        {"Estimated cost is less than", "needs a value behind it"},
        {"Estimated cost is equal to 12 EUR", "\"12 EUR\" is no number"},
        {"Degrees of freedom is equal to 1.5", "\"1.5\" is no number"},
        {"\"Paint\" is less than blue", "\"blue\" is no number"},
        {"Design state is equal to Draft",
         "it can be \"Work in progress\", \"Pending\", \"Released\""},
        {"Design state is equal to", "\"\" is no value of \"Design state\""},
        {"Component suppressed is equal to 19214", "it can be \"Yes\", \"No\""},
        {"Component colour equals", "\"Component colour\" needs a value"},
        {"Title contains " + std::string(128, 'v'), "has 128 characters; it can have up to 127"},
    };
    const CriterionParser parser(SrResReturnHandle());
    for (const Row& row : rows) {
        std::string fault;
        EXPECT_EQ(nullptr, parser.Parse(row.text, JOIN_AND, fault)) << row.text;
        EXPECT_NE(std::string::npos, fault.find(row.part)) << row.text << "\n" << fault;
    }
}

TEST(CriterionText, StoredDates) {
    const std::pair<const char*, const char*> good[] = {
        {"2024-03-07", "2024 3 7"}, {"2024-02-29", "2024 2 29"},  {"2000-02-29", "2000 2 29"},
        {"1601-01-01", "1601 1 1"}, {"9999-12-31", "9999 12 31"},
    };
    for (const auto& [typed, stored] : good)
        EXPECT_EQ(stored, wtext::ToUtf8(StoredDate(typed)));
    for (const char* bad :
         {"2023-02-29", "1900-02-29", "2024-02-30", "2024-04-31", "2024-01-32", "2024-01-00",
          "2024-00-10", "2024-13-01", "1600-12-31", "0000-01-01", "2024-3-7", "2024-03-7x",
          "2024-03-07 ", "2024/03/07", "+024-03-07", "2024-+3-07", "2024--3-07", ""}) {
        EXPECT_EQ(WText(), StoredDate(bad)) << bad;
    }
}

using Arguments = std::vector<std::string>;

bool Parse(const Arguments& arguments, Options& options, std::string& fault) {
    std::vector<HostArgument> given;
    for (const std::string& each : arguments)
        given.push_back({NativePathFromLine(each), each});
    return ParseOptions(given, options, fault);
}

TEST(SrfindOptions, Good) {
    struct Row {
        Arguments arguments;
        const char* options;
    };
    const Row rows[] = {
        {{"D"}, "in D"},
        {{"-"}, "in -"},
        {{"--", "-r"}, "in -r"},
        {{"-r", "D", "-c"}, "subfolders match-case in D"},
        {{"-rc0", "D"}, "subfolders match-case print0 in D"},
        {{"-w", "a", "-o", "b", "D"}, "and:a or:b in D"},
        {{"--where", "a", "--or", "b", "D"}, "and:a or:b in D"},
        {{"-wa", "--or=b=c", "D"}, "and:a or:b=c in D"},
        {{"-rwa", "D"}, "and:a subfolders in D"},
        {{"-w", "-r", "D"}, "and:-r in D"},
        {{"-w", "", "D"}, "and: in D"},
        {{"--where=", "D"}, "and: in D"},
        {{"--sort", "name", "D"}, "by name in D"},
        {{"--sort=folder", "D"}, "by folder in D"},
        {{"--files-from", "L", "--stats"}, "stats from L"},
        {{"--files-from=-"}, "from -"},
        {{"--criteria"}, "criteria"},
        {{"-h", "a", "-r"}, "subfolders help in a"},
        {{"--version"}, "version"},
    };
    for (const Row& row : rows) {
        Options options;
        std::string fault;
        ASSERT_TRUE(Parse(row.arguments, options, fault)) << row.options << ": " << fault;
        std::string shown;
        for (const CriterionOption& each : options.criteria)
            shown += (each.isOr ? "or:" : "and:") + each.text + " ";
        if (options.subfolders) shown += "subfolders ";
        if (options.matchCase) shown += "match-case ";
        if (options.print0) shown += "print0 ";
        if (options.stats) shown += "stats ";
        if (options.help) shown += "help ";
        if (options.version) shown += "version ";
        if (options.listCriteria) shown += "criteria ";
        if (options.sort != eSort::None)
            shown += options.sort == eSort::ByName ? "by name " : "by folder ";
        if (options.haveLookIn) shown += "in " + options.lookIn.text + " ";
        if (options.haveFilesFrom) {
            shown += options.filesFrom == NativePathFromLine("L") ? "from L " : "from - ";
        }
        EXPECT_EQ(row.options + std::string(" "), shown);
    }
}

TEST(SrfindOptions, Bad) {
    struct Row {
        Arguments arguments;
        const char* part;  // of the message
    };
    const Row rows[] = {
        {{}, "no place to look in"},
        {{"-r"}, "no place to look in"},
        {{"D", "E"}, "\"E\" would be a second one"},
        {{"-w"}, "-w needs a CRITERION"},
        {{"-rw"}, "-w needs a CRITERION"},
        {{"D", "--where"}, "--where needs a CRITERION"},
        {{"-o", "a", "D"}, "--or \"a\" has no criterion before it"},
        {{"-x", "D"}, "there is no option -x"},
        {{"-rx", "D"}, "there is no option -x"},
        {{"--Where", "a", "D"}, "there is no option --Where"},
        {{"--subfolders=1", "D"}, "--subfolders takes no value"},
        {{"--sort", "size", "D"}, "not \"size\""},
        {{"--sort=", "D"}, "not \"\""},
        {{"--files-from", "L", "D"}, "\"D\" can't be looked in as well"},
        {{"--files-from", "L", "-r"}, "--subfolders has no meaning"},
        {{"--related", "D", "E"}, "\"E\" would be a second one"},
        {{"--related=D", "-r"}, "--subfolders has no meaning"},
        {{"--records", "D"}, "--records needs --files-from"},
        {{"--save", "n", "D"}, "--save \"n\" has no criteria"},
        {{"--open", "", "D"}, "--open needs a name"},
    };
    for (const Row& row : rows) {
        Options options;
        std::string fault;
        EXPECT_FALSE(Parse(row.arguments, options, fault)) << row.part;
        EXPECT_NE(std::string::npos, fault.find(row.part)) << row.part << "\n" << fault;
    }
}

}  // namespace
