// srprops FILE...: prints every property of the documents; what can't be read is told on the
// standard error output.
#include "host/srprops/property_lister.h"
#include "platform/host/program_main.h"

namespace {

enum eExit { kAllRead = 0, kWrongUse = 2, kNotAllRead = 3 };

}  // namespace

int ProgramMain(const std::vector<HostArgument>& arguments) {
    if (arguments.empty()) {
        WriteError("Usage: srprops FILE...\nPrints the properties of the documents.\n");
        return kWrongUse;
    }
    PropertyLister lister;
    int status = kAllRead;
    for (const HostArgument& argument : arguments) {
        if (!lister.List(argument.path, argument.text)) status = kNotAllRead;
        WriteOutput(lister.Rows());
        WriteError(lister.Faults());
    }
    return status;
}
