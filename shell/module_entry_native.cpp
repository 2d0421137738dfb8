// The module's load and unload where a library has no entry of its own: a static object's life.
#include "module/module_state.h"

namespace {

struct ModuleLife {
    // Without the library the module stays all the same; each later need tries again.
    ModuleLife() { SrResReturnHandle(); }
    ~ModuleLife() { ReleaseResourceLibrary(); }
};
const ModuleLife moduleLife;

}  // namespace
