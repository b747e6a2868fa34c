#include "array/description/Import.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "array/description/Reader.h"
#include "cli/Listing.h"
#include "cli/NewState.h"
#include "cli/Quantities.h"
#include "cli/Report.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

struct CountedClass {
    const char* noun;
    const char* member;
    array::CLASSID_e objectClass;
};

constexpr CountedClass countedClasses[] = {
    {"endpoint", "endpoints", Pegasus::CLASSID_TCP_ENDPOINT},
    {"volume", "volumes", Pegasus::CLASSID_VOLUME},
    {"target", "targets", Pegasus::CLASSID_TARGET},
    {"initiator", "initiators", Pegasus::CLASSID_INITIATOR},
    {"logical unit", "logicalUnits", Pegasus::CLASSID_LOGICAL_UNIT},
};

struct Import {
    std::string file;

    void arguments(CLI::App& app) {
        app.add_option("FILE", file, "The description; - for standard input")->required();
    }

    void run(Context& context) const {
        if (file == "-") {
            importInto(context, context.in, 0);
        } else {
            importFile(context);
        }
        printImported(context);
    }

private:
    void importFile(Context& context) const {
        std::ifstream text(file, std::ios::binary);
        if (!text) {
            throw std::runtime_error(file + ": " + std::strerror(errno));
        }
        std::error_code unknown;
        const auto size = std::filesystem::file_size(file, unknown);
        importInto(context, text, unknown ? 0 : size);
    }

    // Into the state directory, or a new one that is there only when all is imported.
    void importInto(Context& context, std::istream& text, std::uint64_t size) const {
        const std::filesystem::path state = array::stateDirectory(context.state);
        clearLeftovers(state, context.err);
        if (std::filesystem::exists(state)) {
            import(context, *array::Array::openOrCreate(state), text, size);
        } else {
            NewState made(state);
            import(context, *array::Array::openOrCreate(made.directory()), text, size);
            made.putInPlace();
        }
    }

    // size: of the text in bytes; 0: unknown
    void import(Context& context, array::Array& array, std::istream& text,
                std::uint64_t size) const {
        Progress progress(context.terminal, context.errIsTerminal, size, Progress::Clock::now());
        std::uint64_t entries = 0;
        const auto afterEach = [&] {
            if (size > 0 && ++entries % 1024 == 0) {
                progress.update(static_cast<std::uint64_t>(text.tellg()), Progress::Clock::now());
            }
        };
        try {
            array::description::importFrom(text, array, afterEach);
        } catch (const array::description::DescriptionError& error) {
            throw array::description::DescriptionError(file, error.what());
        }
    }

    static void printImported(Context& context) {
        const array::SnapshotPtr snapshot = context.array().snapshot();
        Json counts = Json::object();
        std::string text;
        for (const auto& [noun, member, objectClass] : countedClasses) {
            const std::size_t count = snapshot->count(objectClass);
            counts[member] = count;
            text += (text.empty() ? "Imported " : ", ") + counted(count, noun);
        }
        if (context.json) {
            printJson(context.out, counts);
        } else {
            context.out << text << ".\n";
        }
    }
};

} // namespace

void addImportCommand(CLI::App& app, Context& context) {
    add<Import>(app, context, "import", "Fill an empty or new array from a description");
}

} // namespace cli
