#include "array/description/Export.h"

#include <ostream>

#include "array/description/Writer.h"
#include "cli/Quantities.h"
#include "cli/Report.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

struct Export {
    bool withSecrets = false;

    void arguments(CLI::App& app) {
        app.add_flag("--with-secrets", withSecrets,
                     "Write secrets too; else objects that have one stand without");
    }

    void run(Context& context) const {
        const array::SnapshotPtr snapshot = context.array().snapshot();
        Progress progress(context.terminal, context.errIsTerminal,
                          array::description::countEntries(*snapshot), Progress::Clock::now());
        std::uint64_t entries = 0;
        array::description::Writer writer(context.out, withSecrets
                                                           ? array::description::Secrets::Write
                                                           : array::description::Secrets::Leave);
        const auto leftOut = array::description::exportTo(writer, *snapshot, [&] {
            if (++entries % 1024 == 0) {
                progress.update(entries, Progress::Clock::now());
            }
        });
        writer.finish();
        if (leftOut > 0) {
            context.err << "arrayctl: left out " << counted(leftOut, "logical unit")
                        << " without a volume\n";
        }
    }
};

} // namespace

void addExportCommand(CLI::App& app, Context& context) {
    add<Export>(app, context, "export", "Write the array as a description");
}

} // namespace cli
