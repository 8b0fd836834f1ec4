#include "data/generator/SamplePrices.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

// Writes the simulated price files into a data folder: generate_samples DATA_FOLDER
int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: generate_samples DATA_FOLDER\n", stderr);
        return 2;
    }
    bool written = true;
    ta::data::GenerateSamplePrices([&](const std::string& path, const std::string& text) {
        const std::filesystem::path file = std::filesystem::path(argv[1]) / path;
        std::error_code error;
        std::filesystem::create_directories(file.parent_path(), error);
        std::ofstream stream(file, std::ios::binary);
        stream << text;
        stream.close();
        if (!stream) {
            std::fprintf(stderr, "cannot write %s\n", file.string().c_str());
            written = false;
        }
    });
    return written ? 0 : 1;
}
