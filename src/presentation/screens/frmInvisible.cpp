#include "presentation/screens/frmInvisible.h"

#include "platform/forms/ImageList.h"

using namespace Qt::StringLiterals;

namespace {

Image *imageOf(Form &form, const QString &name, const QString &svgFile, int side)
{
    ImageList pictures(QSize(side, side));
    pictures.add(name, svgFile);
    auto *image = new Image(&form);
    image->setObjectName(name);
    image->setPicture(pictures.icon(1));
    return image;
}

} // namespace

frmInvisible::frmInvisible()
    : Form(u"frmInvisible"_s), Image1(imageOf(*this, u"Image1"_s, u":/faktura/hjelp.svg"_s, 24)),
      imgURL(imageOf(*this, u"imgURL"_s, u":/faktura/hand.svg"_s, 32))
{
}
