#include "shell/plugin/Klassefabrikk.h"

#include "shell/component/Main.h"
#include "shell/component/clsEhf3.h"
#include "shell/component/clsFaktura.h"

namespace {

/// A parent may end without having unloaded the component. Qt then deletes the root object after
/// the component's statics, and these have closed by themselves what was open.
bool statiskeErBorte = false;

struct Statikkvakt
{
    ~Statikkvakt() { statiskeErBorte = true; }
};

} // namespace

Klassefabrikk::Klassefabrikk()
{
    static const Statikkvakt vakt;
    Main();
}

Klassefabrikk::~Klassefabrikk()
{
    if (!statiskeErBorte)
        Unload();
}

QObject *Klassefabrikk::CreateInstance()
{
    return new clsFaktura;
}

QObject *Klassefabrikk::CreateInstance(const QString &klasse)
{
    if (klasse == u"Faktura.clsFaktura")
        return new clsFaktura;
    if (klasse == u"Faktura.clsEhf3")
        return new clsEhf3;
    return nullptr;
}
