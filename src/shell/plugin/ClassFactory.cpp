#include "shell/plugin/ClassFactory.h"

#include "shell/component/Main.h"
#include "shell/component/clsFaktura.h"

namespace {

/// A parent may end without having unloaded the component. Qt then deletes the root object after
/// the component's statics, and these have closed by themselves what was open.
bool staticsAreGone = false;

struct StaticsWatch
{
    ~StaticsWatch() { staticsAreGone = true; }
};

} // namespace

ClassFactory::ClassFactory()
{
    static const StaticsWatch watch;
    Main();
}

ClassFactory::~ClassFactory()
{
    if (!staticsAreGone)
        Unload();
}

QObject *ClassFactory::CreateInstance()
{
    return new clsFaktura;
}
