#pragma once

#include "platform/forms/Forms.h"
#include "platform/grid/fpSpread.h"
#include "posting/run/BokforTest.h"
#include "posting/screen/frmBokfor.h"
#include "support/Control.h"
#include "support/SettingsFolder.h"
#include "support/TestApplication.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace bokforkolonne;

/// The posting screen, driven by mouse and keyboard.
class FrmBokforTest : public BokforTest
{
protected:
    void TearDown() override
    {
        unloadForms();
        runEvents();
    }

    static frmBokfor *form() { return SharedForm<frmBokfor>::existing(); }
    static void open()
    {
        SharedForm<frmBokfor>::get().show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form()));
    }
    template<class Control>
    static Control *control(const QString &name)
    {
        return &controlOf<Control>(form(), name);
    }
    static fpSpread &grid() { return *control<fpSpread>(u"fpSpread1"_s); }
    static QPushButton *button(const QString &name) { return control<QPushButton>(name); }
    static QComboBox *box(const QString &name) { return control<QComboBox>(name); }
    static bool canTransfer() { return button(u"btnTransfer"_s)->isEnabled(); }

    static QString at(int col, int row)
    {
        grid().setCurrent(col, row);
        return grid().text();
    }
    /// A row's cells with "|" between them.
    static QString rowText(int row)
    {
        QStringList cells;
        for (int col = 1; col <= 8; ++col)
            cells += at(col, row);
        return cells.join(u'|');
    }
    static QPoint middleOf(int col, int row)
    {
        const QModelIndex index = grid().model()->index(row - 1, col - 1);
        grid().scrollTo(index);
        return grid().visualRect(index).center();
    }
    static void clickCell(int col, int row)
    {
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, middleOf(col, row));
    }
    static void click(QWidget *widget) { QTest::mouseClick(widget, Qt::LeftButton); }
    static QStringList entries(const QComboBox &list)
    {
        QStringList texts;
        for (int i = 0; i < list.count(); ++i)
            texts += list.itemText(i);
        return texts;
    }
    /// Picks an entry from the drop-down list with the mouse.
    static void pick(QComboBox *list, int entry)
    {
        list->showPopup();
        QAbstractItemView *view = list->view();
        const QModelIndex index = list->model()->index(entry, 0);
        view->scrollTo(index);
        // The list takes no click in its first moments, so that the one that opened it does no
        // harm; a key has the same effect.
        view->setCurrentIndex(index);
        QTest::keyClick(view, Qt::Key_Return);
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
        click(button(u"btnTransfer"_s));
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
