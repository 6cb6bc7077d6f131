#include "presentation/screens/frmInvisible.h"

#include "platform/forms/OwnPicture.h"

using namespace Qt::StringLiterals;

namespace {

Image *bildeFor(Form &skjerm, const QString &navn, const QString &svgFil, int side)
{
    auto *bilde = new Image(&skjerm);
    bilde->setObjectName(navn);
    bilde->setPicture(ownPicture(svgFil, {side, side}));
    return bilde;
}

} // namespace

frmInvisible::frmInvisible()
    : Form(u"frmInvisible"_s), Image1(bildeFor(*this, u"Image1"_s, u":/faktura/hjelp.svg"_s, 24)),
      imgURL(bildeFor(*this, u"imgURL"_s, u":/faktura/hand.svg"_s, 32))
{
}
