#pragma once

#include "platform/forms/Form.h"

/// An empty form that is never shown: what a report without preview has as its window.
class frmDummy : public Form
{
    Q_OBJECT

public:
    frmDummy();
};
