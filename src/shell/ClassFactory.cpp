#include "shell/ClassFactory.h"

#include "shell/Main.h"
#include "shell/clsFaktura.h"

ClassFactory::ClassFactory()
{
    Main();
}

ClassFactory::~ClassFactory()
{
    Unload();
}

QObject *ClassFactory::CreateInstance()
{
    return new clsFaktura;
}
