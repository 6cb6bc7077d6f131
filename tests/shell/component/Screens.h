#pragma once

#include "order/frmOrdre.h"
#include "output/lists/frmOrdreSkriv.h"
#include "output/lists/frmOversikt.h"
#include "output/printing/Forhandsvisning.h"
#include "output/printing/frmUtskrift.h"
#include "posting/screen/frmBokfor.h"
#include "presentation/options/frmOptions.h"
#include "presentation/screens/frmTMsgBox.h"
#include "registers/customers/frmKunder.h"
#include "registers/products/frmKalkyle.h"
#include "registers/products/frmProdukt.h"
#include "shell/component/frmRegningsdel.h"
#include "support/ModuleTest.h"
#include "support/TestApplication.h"

#include <functional>
#include <memory>

/// A screen of the module as it is designed, not loaded yet.
struct Screen
{
    QString name;
    std::function<std::unique_ptr<QWidget>()> make;
};

inline void PrintTo(const Screen &screen, std::ostream *out)
{
    *out << screen.name.toStdString();
}

template<class Form>
std::unique_ptr<QWidget> makeScreen()
{
    return std::make_unique<Form>();
}

inline std::unique_ptr<QWidget> makePreview()
{
    auto document = std::make_shared<report::Document>();
    document->paper = QSizeF(210, 297);
    document->pages.resize(1);
    return std::make_unique<Forhandsvisning>(document, report::WindowSettings());
}

inline const Screen kScreens[] = {
    {QStringLiteral("frmRegningsdel"), makeScreen<frmRegningsdel>},
    {QStringLiteral("frmProdukt"), makeScreen<frmProdukt>},
    {QStringLiteral("frmKalkyle"), makeScreen<frmKalkyle>},
    {QStringLiteral("frmOrdre"), makeScreen<frmOrdre>},
    {QStringLiteral("frmKunder"), makeScreen<frmKunder>},
    {QStringLiteral("frmOversikt"), makeScreen<frmOversikt>},
    {QStringLiteral("frmOrdreSkriv"), makeScreen<frmOrdreSkriv>},
    {QStringLiteral("frmBokfor"), makeScreen<frmBokfor>},
    {QStringLiteral("frmOptions"), makeScreen<frmOptions>},
    {QStringLiteral("frmUtskrift"), makeScreen<frmUtskrift>},
    {QStringLiteral("frmTMsgBox"), makeScreen<frmTMsgBox>},
    {QStringLiteral("Forhandsvisning"), makePreview},
};
