#include "platform/forms/CommonDialog.h"

#include "platform/forms/FileDialog.h"
#include "runtime/RunTimeError.h"
#include "support/TestApplication.h"

#include <QComboBox>
#include <QFileDialog>
#include <QHash>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

void typeName(QFileDialog &dialog, const QString &name)
{
    auto *edit = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s);
    ASSERT_NE(edit, nullptr);
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, name);
}

QPushButton *acceptButton(const QFileDialog &dialog)
{
    for (QPushButton *button : dialog.findChildren<QPushButton *>()) {
        if (button->isDefault())
            return button;
    }
    return nullptr;
}

void pressOk(QFileDialog &dialog)
{
    ASSERT_NE(acceptButton(dialog), nullptr);
    QTest::mouseClick(acceptButton(dialog), Qt::LeftButton);
}

class FileChoice : public FormsFixture
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        setFolderMemory({[this](const QString &) { return folder.path(); }, {}});
        dialog.fileKind = u"EHF"_s;
        dialog.filter = u"EHF Format (*.xml)|*.xml|Bilder|*.bmp;*.gif|All Files (*.*)|*.*"_s;
        dialog.defaultExt = u"xml"_s;
    }

    void TearDown() override { setFolderMemory({}); }

    [[nodiscard]] QString inFolder(const QString &name) const { return folder.filePath(name); }
    void makeFile(const QString &name) const
    {
        QFile file(inFolder(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    QTemporaryDir folder;
    CommonDialog dialog;
};

/// A user's home, and a memory of folders that begins empty.
class FolderChoice : public FormsFixture
{
protected:
    FolderChoice() : m_home(qgetenv("HOME")), m_settings(qgetenv("XDG_CONFIG_HOME"))
    {
        qputenv("HOME", home.path().toUtf8());
        qputenv("XDG_CONFIG_HOME", home.filePath(u"settings"_s).toUtf8());
        setFolderMemory({[this](const QString &kind) { return remembered.value(kind); },
                         [this](const QString &kind, const QString &folder) {
                             remembered.insert(kind, folder);
                         }});
    }
    ~FolderChoice() override
    {
        setFolderMemory({});
        restore("HOME", m_home);
        restore("XDG_CONFIG_HOME", m_settings);
    }

    [[nodiscard]] QString makeFolder(const QString &name) const
    {
        EXPECT_TRUE(QDir(home.path()).mkdir(name));
        return home.filePath(name);
    }
    /// Where a dialog for a file of that kind opens.
    static QString openedFor(const QString &kind, const QString &fileName = {})
    {
        CommonDialog dialog;
        dialog.fileKind = kind;
        dialog.fileName = fileName;
        QString opened;
        onNextModal<QFileDialog>([&](QFileDialog &shown) {
            opened = shown.directory().path();
            shown.reject();
        });
        dialog.showSave();
        return opened;
    }
    static void choose(const QString &kind, const QString &file)
    {
        CommonDialog dialog;
        dialog.fileKind = kind;
        dialog.fileName = file;
        onNextModal<QFileDialog>([](QFileDialog &shown) { pressOk(shown); });
        dialog.showSave();
        EXPECT_EQ(dialog.fileName, file);
    }

    QTemporaryDir home;
    QHash<QString, QString> remembered;

private:
    static void restore(const char *name, const QByteArray &value)
    {
        if (value.isNull())
            qunsetenv(name);
        else
            qputenv(name, value);
    }

    const QByteArray m_home;
    const QByteArray m_settings;
};

class PrinterChoice : public FormsFixture
{
protected:
    CommonDialog dialog;
};

} // namespace

TEST_F(FileChoice, SaveSuggestsTheNameAndReturnsThePath)
{
    dialog.fileName = u"Faktura-12.xml"_s;
    QString suggested;
    QString name;
    onNextModal<QFileDialog>([&](QFileDialog &shown) {
        suggested = shown.findChild<QLineEdit *>(u"fileNameEdit"_s)->text();
        name = shown.objectName();
        pressOk(shown);
    });
    dialog.showSave();
    EXPECT_EQ(suggested, u"Faktura-12.xml"_s);
    EXPECT_EQ(name, u"CommonDialog"_s);
    EXPECT_EQ(dialog.fileName, inFolder(u"Faktura-12.xml"_s));
    EXPECT_FALSE(QFile::exists(dialog.fileName)) << "choosing writes nothing";
}

TEST_F(FileChoice, TheDefaultExtensionIsAddedToANameWithoutOne)
{
    onNextModal<QFileDialog>([](QFileDialog &shown) {
        typeName(shown, u"brev"_s);
        pressOk(shown);
    });
    dialog.showSave();
    EXPECT_EQ(dialog.fileName, inFolder(u"brev.xml"_s));
    onNextModal<QFileDialog>([](QFileDialog &shown) {
        typeName(shown, u"brev.txt"_s);
        pressOk(shown);
    });
    dialog.showSave();
    EXPECT_EQ(dialog.fileName, inFolder(u"brev.txt"_s));
}

TEST_F(FileChoice, ANameWithAFolderOpensThatFolder)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"under"_s));
    dialog.fileName = inFolder(u"under/a.xml"_s);
    QString opened;
    onNextModal<QFileDialog>([&](QFileDialog &shown) {
        opened = shown.directory().path();
        shown.reject();
    });
    dialog.showSave();
    EXPECT_EQ(opened, inFolder(u"under"_s));
}

TEST_F(FileChoice, CancelLeavesThePropertiesAndRaisesTheErrorOnlyWhenAsked)
{
    dialog.fileName = u"a.xml"_s;
    dialog.filterIndex = 2;
    const auto cancel = [] {
        onNextModal<QFileDialog>(
            [](QFileDialog &shown) { QTest::keyClick(&shown, Qt::Key_Escape); });
    };
    cancel();
    EXPECT_EQ(passOver([&] { dialog.showSave(); }), 0);
    dialog.cancelError = true;
    cancel();
    EXPECT_EQ(passOver([&] { dialog.showSave(); }), 32755);
    cancel();
    EXPECT_EQ(passOver([&] { dialog.showOpen(); }), 32755);
    EXPECT_EQ(dialog.fileName, u"a.xml"_s);
    EXPECT_EQ(dialog.filterIndex, 2);
}

TEST_F(FileChoice, FiltersShowTheirDescriptions)
{
    QStringList shownFilters;
    QStringList patterns;
    onNextModal<QFileDialog>([&](QFileDialog &shown) {
        const auto *box = shown.findChild<QComboBox *>(u"fileTypeCombo"_s);
        for (int i = 0; i < box->count(); ++i)
            shownFilters << box->itemText(i).trimmed();
        patterns = shown.nameFilters();
        shown.reject();
    });
    dialog.showOpen();
    EXPECT_EQ(shownFilters,
              (QStringList{u"EHF Format (*.xml)"_s, u"Bilder"_s, u"All Files (*.*)"_s}));
    EXPECT_TRUE(patterns.value(1).endsWith(u"(*.bmp *.gif)"_s));
    EXPECT_TRUE(patterns.value(2).endsWith(u"(*)"_s)) << "names without a dot are files too";
}

TEST_F(FileChoice, TheFilterIndexCountsFromOneBothWays)
{
    const std::pair<int, int> opensOn[] = {{0, 0}, {1, 0}, {2, 1}, {3, 2}, {9, 0}};
    for (const auto &[given, index] : opensOn) {
        dialog.filterIndex = given;
        int opened = -1;
        onNextModal<QFileDialog>([&](QFileDialog &shown) {
            opened = shown.findChild<QComboBox *>(u"fileTypeCombo"_s)->currentIndex();
            shown.reject();
        });
        dialog.showOpen();
        EXPECT_EQ(opened, index) << given;
    }
    onNextModal<QFileDialog>([](QFileDialog &shown) {
        auto *box = shown.findChild<QComboBox *>(u"fileTypeCombo"_s);
        QTest::keyClick(box, Qt::Key_End);
        typeName(shown, u"a.txt"_s);
        pressOk(shown);
    });
    dialog.showSave();
    EXPECT_EQ(dialog.filterIndex, 3);
}

TEST_F(FolderChoice, AUserWithoutDocumentsBeginsAtHome)
{
    EXPECT_EQ(openedFor(u"EHF"_s, u"Faktura-12.xml"_s), home.path());
}

TEST_F(FolderChoice, TheFirstOfAKindBeginsAmongTheDocuments)
{
    const QString documents = makeFolder(u"Documents"_s);
    EXPECT_EQ(openedFor(u"EHF"_s, u"Faktura-12.xml"_s), documents);
    EXPECT_EQ(openedFor({}), documents);
}

TEST_F(FolderChoice, TheNextOfAKindBeginsWhereTheLastOneLies)
{
    const QString documents = makeFolder(u"Documents"_s);
    const QString invoices = makeFolder(u"Faktura 2014"_s);
    choose(u"EHF"_s, invoices + u"/Faktura-12.xml"_s);
    EXPECT_EQ(openedFor(u"EHF"_s, u"Faktura-13.xml"_s), invoices);
    EXPECT_EQ(openedFor(u"Logo"_s), documents) << "a kind of its own";
    EXPECT_EQ(openedFor({}), documents) << "no kind";
    EXPECT_EQ(remembered.keys(), QStringList(u"EHF"_s));
}

TEST_F(FolderChoice, AFolderThatHasGoneIsPassedOver)
{
    const QString documents = makeFolder(u"Documents"_s);
    remembered.insert(u"EHF"_s, home.filePath(u"minnepinne"_s));
    EXPECT_EQ(openedFor(u"EHF"_s), documents);
    EXPECT_EQ(openedFor(u"EHF"_s, home.filePath(u"minnepinne/Faktura-12.xml"_s)), documents);
    QFile file(home.filePath(u"minnepinne"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(openedFor(u"EHF"_s), documents) << "a file is no folder";
}

TEST_F(FolderChoice, ACancelledDialogRemembersNothing)
{
    remembered.insert(u"EHF"_s, makeFolder(u"a"_s));
    EXPECT_EQ(openedFor(u"EHF"_s, makeFolder(u"b"_s) + u"/Faktura-12.xml"_s),
              home.filePath(u"b"_s));
    EXPECT_EQ(remembered.value(u"EHF"_s), home.filePath(u"a"_s));
}

TEST_F(FileChoice, TheOverwritePromptAsksInNorwegian)
{
    makeFile(u"a.xml"_s);
    dialog.fileName = u"a.xml"_s;
    dialog.flags = 6;
    QString question;
    QStringList buttons;
    onNextModal<QFileDialog>([&](QFileDialog &shown) {
        onNextModal<QMessageBox>([&](QMessageBox &box) {
            question = box.text();
            for (const QAbstractButton *button : box.buttons())
                buttons << button->text().remove(u'&');
            box.button(QMessageBox::Yes)->click();
        });
        pressOk(shown);
    });
    dialog.showSave();
    EXPECT_EQ(question, u"a.xml finnes fra før.\nVil du erstatte den?"_s);
    EXPECT_EQ(buttons, (QStringList{u"Ja"_s, u"Nei"_s}));
    EXPECT_EQ(dialog.fileName, inFolder(u"a.xml"_s));
}

TEST_F(FileChoice, RefusingToOverwriteLeadsBackToTheDialog)
{
    makeFile(u"a.xml"_s);
    dialog.fileName = u"a.xml"_s;
    dialog.flags = dialogflags::kOverwritePrompt;
    onNextModal<QFileDialog>([&](QFileDialog &shown) {
        onNextModal<QMessageBox>([](QMessageBox &box) { box.button(QMessageBox::No)->click(); });
        pressOk(shown);
        EXPECT_TRUE(shown.isVisible());
        typeName(shown, u"b.xml"_s);
        pressOk(shown);
    });
    dialog.showSave();
    EXPECT_EQ(dialog.fileName, inFolder(u"b.xml"_s));
}

TEST_F(FileChoice, WithoutTheFlagNothingIsAsked)
{
    makeFile(u"a.xml"_s);
    dialog.fileName = u"a.xml"_s;
    onNextModal<QFileDialog>([](QFileDialog &shown) { pressOk(shown); });
    dialog.showSave();
    EXPECT_EQ(dialog.fileName, inFolder(u"a.xml"_s));
}

TEST_F(FileChoice, OpenTakesAMissingFile)
{
    onNextModal<QFileDialog>([](QFileDialog &shown) {
        typeName(shown, u"borte.xml"_s);
        pressOk(shown);
    });
    dialog.showOpen();
    EXPECT_EQ(dialog.fileName, inFolder(u"borte.xml"_s));
}

TEST_F(FileChoice, TitlesAndButtonsAreNorwegian)
{
    QStringList texts;
    const auto note = [&] {
        onNextModal<QFileDialog>([&](QFileDialog &shown) {
            texts << shown.windowTitle() << acceptButton(shown)->text().remove(u'&');
            shown.reject();
        });
    };
    note();
    dialog.showOpen();
    note();
    dialog.showSave();
    dialog.dialogTitle = u"Velg logo"_s;
    note();
    dialog.showOpen();
    EXPECT_EQ(texts, (QStringList{u"Åpne"_s, u"Åpne"_s, u"Lagre som"_s, u"Lagre"_s, u"Velg logo"_s,
                                  u"Åpne"_s}));
}

TEST_F(PrinterChoice, CopiesAndTitleGoInAndCopiesComeOut)
{
    dialog.copies = 2;
    dialog.flags = 1048588;
    int suggested = 0;
    QString title;
    onNextModal<QDialog>([&](QDialog &shown) {
        auto *copies = shown.findChild<QSpinBox *>(u"spnEksemplarer"_s);
        suggested = copies->value();
        title = shown.windowTitle();
        auto *printers = shown.findChild<QComboBox *>(u"cmbSkriver"_s);
        printers->setCurrentIndex(printers->count() - 1);
        copies->selectAll();
        QTest::keyClicks(copies, u"3"_s);
        shown.findChild<QPushButton *>(u"cmdAvbryt"_s)->click();
    });
    dialog.showPrinter();
    EXPECT_EQ(suggested, 2);
    EXPECT_EQ(title, u"Skriv ut"_s);
    EXPECT_EQ(dialog.copies, 2) << "cancelled";
}

TEST_F(PrinterChoice, CancelRaisesTheErrorWhenAsked)
{
    dialog.cancelError = true;
    onNextModal<QDialog>([](QDialog &shown) { QTest::keyClick(&shown, Qt::Key_Escape); });
    EXPECT_EQ(passOver([&] { dialog.showPrinter(); }), 32755);
}

TEST_F(PrinterChoice, APdfFileIsAskedForWhenItIsChosen)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"ut.pdf"_s);
    bool cameBack = false;
    onNextModal<QDialog>([&](QDialog &shown) {
        auto *printers = shown.findChild<QComboBox *>(u"cmbSkriver"_s);
        printers->setCurrentIndex(printers->findText(u"PDF-fil"_s));
        auto *copies = shown.findChild<QSpinBox *>(u"spnEksemplarer"_s);
        copies->selectAll();
        QTest::keyClicks(copies, u"3"_s);
        auto *print = shown.findChild<QPushButton *>(u"cmdSkriv"_s);

        onNextModal<QFileDialog>([](QFileDialog &save) { save.reject(); });
        print->click();
        cameBack = shown.isVisible();

        onNextModal<QFileDialog>([&](QFileDialog &save) {
            typeName(save, file);
            pressOk(save);
        });
        print->click();
    });
    dialog.showPrinter();
    EXPECT_TRUE(cameBack) << "cancelling the file leads back";
    EXPECT_EQ(dialog.pdfFile, file);
    EXPECT_EQ(dialog.printerName, QString());
    EXPECT_EQ(dialog.copies, 3);
}
