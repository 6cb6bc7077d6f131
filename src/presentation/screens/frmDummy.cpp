#include "presentation/screens/frmDummy.h"

using namespace Qt::StringLiterals;

frmDummy::frmDummy() : Form(u"frmDummy"_s) {}
