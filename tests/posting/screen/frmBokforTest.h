#pragma once

#include "posting/run/BokforTest.h"
#include "posting/screen/frmBokfor.h"
#include "support/ScreenHands.h"
#include "support/SettingsFolder.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace bokforkolonne;

/// The posting screen, driven by mouse and keyboard.
class FrmBokforTest : public BokforTest, public ScreenHands<frmBokfor>
{
protected:
    void TearDown() override
    {
        unloadForms();
        runEvents();
    }

    static QPushButton *button(const QString &name) { return &control<QPushButton>(name); }
    static QComboBox *box(const QString &name) { return &control<QComboBox>(name); }
    static bool canTransfer() { return button(u"btnTransfer"_s)->isEnabled(); }

    /// A row's cells with "|" between them.
    static QString rowText(int row) { return rowTexts(row, 1, 8).join(u'|'); }
    static QStringList entries(const QComboBox &list)
    {
        QStringList texts;
        for (int i = 0; i < list.count(); ++i)
            texts += list.itemText(i);
        return texts;
    }
    /// Opens the drop-down list and picks an entry.
    static void pick(QComboBox *list, int entry)
    {
        list->showPopup();
        hands::pick(*list, entry);
    }

    static constexpr auto kInfo = QMessageBox::Information;
    static constexpr auto kWarning = QMessageBox::Warning;
    struct Boks
    {
        QString text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        friend bool operator==(const Boks &, const Boks &) = default;
    };
    /// Presses "Bokfør" and answers the message box that comes up. `meanwhile` runs under the box.
    Boks transfer(const std::function<void()> &meanwhile = [] {})
    {
        Boks seen;
        onNextModal<QMessageBox>([&](QMessageBox &shown) {
            seen = {shown.text(), shown.icon()};
            meanwhile();
            shown.accept();
        });
        press(u"btnTransfer"_s);
        return seen;
    }

    /// Invoices with the numbers from 101, each of one line.
    void enterMany(int count)
    {
        for (int nr = 101; nr < 101 + count; ++nr)
            enter({.nr = nr, .linjer = {{u"25"_s, u"125.00"_s}}});
    }

    SettingsFolder settings;
};
