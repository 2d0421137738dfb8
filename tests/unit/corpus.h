// Real documents that stand beside the checkout, or where the environment variable SR_CORPUS says,
// with the expected values of their properties. Without them a test is skipped and says so.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

enum eManifestColumn { kFile, kSet, kId, kType, kValue, kWitnesses, kColumns };
using Row = std::vector<std::string>;  // one line, by eManifestColumn

inline std::vector<Row> RowsOf(const std::string& text) {
    std::vector<Row> rows;
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = text.find('\n', begin)) != std::string::npos;
         begin = end + 1) {
        Row row(1);
        for (const char c : text.substr(begin, end - begin)) {
            if (c == '\t') {
                row.emplace_back();
            } else {
                row.back() += c;
            }
        }
        rows.push_back(row);
    }
    return rows;
}

inline std::vector<Row> ReadRows(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return RowsOf(std::string(std::istreambuf_iterator<char>(file), {}));
}

class Corpus {
public:
    // False when the documents are not at hand; `reason` then says so.
    bool Load(std::string& reason) {
        const char* place = std::getenv("SR_CORPUS");
        folder = place != nullptr ? std::filesystem::path(place)
                                  : std::filesystem::path(SR_SOURCE_FOLDER "/../shared/corpus");
        if (!std::filesystem::exists(folder / "properties.tsv")) {
            reason = "The corpus is not at hand; SR_CORPUS may name its folder.";
            return false;
        }
        for (const Row& row : ReadRows(folder / "damaged.txt")) {
            damage[row.at(0)] = row.at(1);
        }
        for (const Row& row : ReadRows(folder / "properties.tsv")) {
            EXPECT_EQ(std::size_t{kColumns}, row.size()) << row[0];
            if (row.size() == kColumns && row[kFile] != "file") wanted[row[kFile]].push_back(row);
        }
        return true;
    }

    std::filesystem::path folder;
    std::map<std::string, std::string> damage;       // by file: container or propset
    std::map<std::string, std::vector<Row>> wanted;  // by file
};
