#pragma once

#include "data/clsAdoUtils.h"
#include "platform/forms/Forms.h"
#include "platform/forms/PictureBox.h"
#include "platform/forms/TextArea.h"
#include "presentation/options/frmOptions.h"
#include "shell/component/Main.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"
#include "support/ScreenHands.h"
#include "support/SessionTap.h"
#include "support/SettingsFolder.h"
#include "support/Variable.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>

using namespace Qt::StringLiterals;

/// The options screen in a started module of client 5, with settings and a temporary folder of the
/// test's own.
class OptionsFixture : public ScreenTest, public ScreenHands<frmOptions>
{
protected:
    OptionsFixture()
    {
        Main();
        makeParentTables();
        run(u"INSERT INTO Klient (KlientNr,Navn) VALUES (5,'Strand Transport AS')"_s);
        run(u"INSERT INTO Klient (KlientNr,Navn) VALUES (6,'Vik Transport AS')"_s);
        EXPECT_EQ(startModule(), 1);
        (void)gDB->LastError(); // the start on a new database leaves a refusal there
        runEvents();
    }
    static void reopen()
    {
        press(u"cmdCancel"_s);
        open();
    }

    // --- What is on the screen

    static QWidget &page(int index) { return control(u"picOptions_%1"_s.arg(index)); }
    static QCheckBox &check(const QString &name) { return control<QCheckBox>(name); }
    static QRadioButton &option(const QString &name) { return control<QRadioButton>(name); }
    static QLineEdit &box(const QString &name) { return control<QLineEdit>(name); }
    static TextArea &area(int number) { return control<TextArea>(u"txtFaktekst%1"_s.arg(number)); }
    /// What a client without a first text of its own is offered.
    static QString standardSentence()
    {
        return u"Etter forfall beregnes maksimal rente i hht. bestemmelsene i Lov om renter ved "
               u"forsinket betaling."_s;
    }
    static QImage logo() { return control<PictureBox>(u"picLogo"_s).picture(); }
    /// The index of the chosen one of an array of options; -1 when none is.
    static int chosen(const QString &array)
    {
        for (int i = 0;; ++i) {
            const auto *found = screen()->findChild<QRadioButton *>(u"%1_%2"_s.arg(array).arg(i));
            if (!found || found->isChecked())
                return found ? i : -1;
        }
    }
    /// Whether the control itself is enabled, be it on a page that is out of sight.
    static bool isOn(const QString &name)
    {
        return !control(name).testAttribute(Qt::WA_ForceDisabled);
    }
    static bool hasWindowGround(const QString &name)
    {
        const QPalette standard = QApplication::palette("QLineEdit");
        const QColor ground = box(name).palette().color(QPalette::Base);
        EXPECT_TRUE(ground == standard.color(QPalette::Active, QPalette::Base) ||
                    ground == standard.color(QPalette::Active, QPalette::Button));
        return ground == standard.color(QPalette::Active, QPalette::Base);
    }
    // --- What a user does

    /// Clicks a button, a check box or an option, on the page of that tab where it lies on one.
    static void press(const QString &name, int tab = 0)
    {
        if (tab > 0)
            clickTab(tab);
        ScreenHands::press(name);
    }
    // --- What is stored

    static void store(const QString &key, const QString &setting)
    {
        EXPECT_TRUE(gReg->SaveSetting(u"Regningsdel"_s, key, setting));
    }
    /// The stored text, "-" where there is none.
    static QString stored(const QString &key)
    {
        return gReg->GetSetting(u"Regningsdel"_s, key, u"-"_s).remove(QChar(u'\0'));
    }
    /// Columns of the client's row.
    QStringList client(const QString &columns, int number = 5)
    {
        return rows(u"SELECT %1 FROM Klient WHERE KlientNr= %2"_s.arg(columns).arg(number));
    }
    void addOrder(int clientNumber = 5)
    {
        run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus) VALUES ( %1, 60,'Ordre')"_s.arg(
            clientNumber));
    }

    // --- Files

    [[nodiscard]] QString file(const QString &name) const { return files.filePath(name); }
    QString writeFile(const QString &name, const QByteArray &bytes) const
    {
        QFile target(file(name));
        EXPECT_TRUE(target.open(QIODevice::WriteOnly));
        EXPECT_EQ(target.write(bytes), bytes.size());
        return target.fileName();
    }
    /// A picture of one colour.
    QString writePicture(const QString &name, const char *format, QSize size, QColor colour) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        EXPECT_TRUE(image.save(file(name), format));
        return file(name);
    }
    [[nodiscard]] QString logoFile() const { return temporary.filePath(u"output.bin"_s); }
    static QByteArray content(const QString &path)
    {
        QFile source(path);
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    }
    /// The bytes in Klient.Logo, past the module; a null array for Null.
    QByteArray storedLogo(int number = 5)
    {
        ado::Recordset set;
        set.setActiveConnection(connectionString());
        set.setSource(u"SELECT Logo FROM Klient WHERE KlientNr= %1"_s.arg(number));
        set.open();
        return set.isNull(0) ? QByteArray() : set.value(0).toBytes();
    }
    void putLogo(const QByteArray &bytes)
    {
        const Ref<ado::Recordset> rs =
            gDB->GetRS(u"SELECT KlientNr,Logo FROM Klient WHERE KlientNr= 5"_s, false);
        rs->setValue(u"Logo", Value(bytes));
        EXPECT_TRUE(gDB->PutRS(rs));
    }

    SettingsFolder settings;
    QTemporaryDir temporary;
    const Variable tmpdir{"TMPDIR", temporary.path()};
    QTemporaryDir files;
};
