#pragma once

#include "platform/forms/CommonDialog.h"
#include "platform/forms/Form.h"
#include "platform/forms/Image.h"
#include "platform/report/CrystalReport.h"

/// A form that is never shown. It holds what the other screens share.
class frmInvisible : public Form
{
    Q_OBJECT

public:
    frmInvisible();

    /// The help picture. Owned by the form, as are the others.
    Image *const Image1;
    /// The pointer over the help picture, 32 by 32.
    Image *const imgURL;
    /// The file and printer dialogs. A caller sets every property it relies on.
    CommonDialog CommonDialog1;
    /// The report control.
    CrystalReport CrystalReport1;
};
