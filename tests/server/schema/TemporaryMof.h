// MOF files in a folder of their own, which is removed at the end.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "server/schema/MofReader.h"

namespace smisd {

class TemporaryMof {
public:
    TemporaryMof() {
        std::string name = (std::filesystem::temp_directory_path() / "mofXXXXXX").string();
        folder = mkdtemp(name.data());
    }
    ~TemporaryMof() { std::filesystem::remove_all(folder); }
    TemporaryMof(const TemporaryMof&) = delete;
    TemporaryMof& operator=(const TemporaryMof&) = delete;

    std::filesystem::path write(const std::string& name, const std::string& text) const {
        std::ofstream(folder / name, std::ios::binary) << text;
        return folder / name;
    }

    std::filesystem::path folder;
};

} // namespace smisd
