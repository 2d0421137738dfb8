// The peer for document properties: libgsf in one process. bench_gsf TEXT LIST reads the files that
// LIST names, one a line, and counts those whose title contains TEXT.
#include <gsf/gsf-docprop-vector.h>
#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-input-stdio.h>
#include <gsf/gsf-meta-names.h>
#include <gsf/gsf-msole-utils.h>
#include <gsf/gsf.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

namespace {

bool TitleContains(const std::string& path, const char* text) {
    bool contains = false;
    GsfInput* input = gsf_input_stdio_new(path.c_str(), nullptr);
    if (input == nullptr) return false;
    if (GsfInfile* file = gsf_infile_msole_new(input, nullptr)) {
        GsfDocMetaData* meta = gsf_doc_meta_data_new();
        // The title stands in the first of the two summaries, so the other one isn't read.
        if (GsfInput* stream = gsf_infile_child_by_name(file, "\005SummaryInformation")) {
            if (GError* fault = gsf_doc_meta_data_read_from_msole(meta, stream)) {
                g_error_free(fault);
            }
            g_object_unref(stream);
        }
        const GsfDocProp* title = gsf_doc_meta_data_lookup(meta, GSF_META_NAME_TITLE);
        const GValue* value = title != nullptr ? gsf_doc_prop_get_val(title) : nullptr;
        if (value != nullptr && G_VALUE_HOLDS_STRING(value)) {
            const char* have = g_value_get_string(value);
            contains = have != nullptr && std::strstr(have, text) != nullptr;
        }
        g_object_unref(meta);
        g_object_unref(file);
    }
    g_object_unref(input);
    return contains;
}

}  // namespace

int main(int count, char** values) {
    if (count != 3) {
        std::fprintf(stderr, "usage: bench_gsf TEXT LIST\n");
        return 2;
    }
    gsf_init();
    // What it says of damaged documents would cost it time.
    g_log_set_default_handler([](const char*, GLogLevelFlags, const char*, void*) {}, nullptr);
    g_set_print_handler([](const char*) {});
    std::ifstream list(values[2]);
    std::size_t hits = 0;
    for (std::string path; std::getline(list, path);) {
        if (TitleContains(path, values[1])) ++hits;
    }
    std::printf("%zu\n", hits);
    gsf_shutdown();
    return hits != 0 ? 0 : 1;
}
