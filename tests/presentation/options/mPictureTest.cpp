#include "presentation/options/OptionsFixture.h"

#include "presentation/options/mPicture.h"
#include "runtime/Paths.h"
#include "support/FileSizeLimit.h"

#include <QDir>

#include <sys/stat.h>

namespace {

/// The logo between the client's row and the temporary file.
class MPictureTest : public OptionsFixture
{
protected:
    /// What SkrivLogo says, or an empty text where it says nothing.
    static QString said(const PictureBox &box)
    {
        QString text;
        bool answered = false;
        QTimer::singleShot(0, qApp, [&] {
            if (auto *message = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                text = message->text();
                EXPECT_EQ(message->icon(), QMessageBox::Information);
                message->buttons().constFirst()->click();
            }
            answered = true;
        });
        SkrivLogo(box);
        while (!answered)
            QCoreApplication::processEvents();
        return text;
    }
    static QImage picture(QSize size, QColor colour)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        return image;
    }

    const QByteArray kStored = QByteArray("\x00\x01GIF89a\xff'\n", 12);
    PictureBox m_box;
};

// --- The temporary folder

TEST_F(MPictureTest, TheTemporaryFolderEndsWithABackslash)
{
    EXPECT_EQ(TempMappe(), paths::toModule(temporary.path()) + u'\\');
}

TEST_F(MPictureTest, WithoutATemporaryFolderThePathIsTheNameAlone)
{
    putLogo(kStored);
    QTemporaryDir current;
    const QString before = QDir::currentPath();
    QDir::setCurrent(current.path());
    qputenv("TMPDIR", QFile::encodeName(temporary.filePath(u"borte"_s)));
    EXPECT_EQ(TempMappe(), QString());
    EXPECT_EQ(LesLogo(), u"output.bin"_s);
    EXPECT_EQ(content(current.filePath(u"output.bin"_s)), kStored);
    QDir::setCurrent(before);
}

TEST_F(MPictureTest, ASharedTemporaryFolderIsNotUsed)
{
    const QString session = temporary.filePath(u"økt"_s);
    const QString shared = temporary.filePath(u"felles"_s);
    QDir().mkpath(session);
    QDir().mkpath(shared);
    ASSERT_EQ(::chmod(QFile::encodeName(session).constData(), 0700), 0);
    const Variable runtime("XDG_RUNTIME_DIR", session);
    const Variable system("TMPDIR", shared);
    for (const mode_t mode : {01777, 0755, 0750, 0701}) {
        ASSERT_EQ(::chmod(QFile::encodeName(shared).constData(), mode), 0);
        EXPECT_EQ(TempMappe(), paths::toModule(session) + u'\\') << std::oct << mode;
    }
    ASSERT_EQ(::chmod(QFile::encodeName(shared).constData(), 0700), 0);
    EXPECT_EQ(TempMappe(), paths::toModule(shared) + u'\\');
}

TEST_F(MPictureTest, APlantedFolderOfTheSessionIsNotUsed)
{
    const QString shared = temporary.filePath(u"felles"_s);
    QDir().mkpath(shared);
    ASSERT_EQ(::chmod(QFile::encodeName(shared).constData(), 01777), 0);
    const QString planted = temporary.filePath(u"plantet"_s);
    ASSERT_TRUE(QFile::link(shared, planted));
    const Variable runtime("XDG_RUNTIME_DIR", planted);
    const Variable system("TMPDIR", shared);
    const QFileInfo used(paths::toSystem(TempMappe()).chopped(1));
    EXPECT_TRUE(used.isDir() && !used.isSymLink());
    EXPECT_NE(used.canonicalFilePath(), QFileInfo(shared).canonicalFilePath());
    EXPECT_EQ(used.permissions() & (QFile::ReadOther | QFile::ExeOther | QFile::WriteOther),
              QFile::Permissions());
}

// --- Reading

TEST_F(MPictureTest, AStoredLogoBecomesAFileOfItsBytes)
{
    putLogo(kStored);
    EXPECT_EQ(LesLogo(), TempMappe() + u"output.bin"_s);
    EXPECT_EQ(content(logoFile()), kStored);
}

TEST_F(MPictureTest, ALogoOfAnySizeGoesInOnePiece)
{
    QByteArray large(5'000'000, '\0');
    for (qsizetype i = 0; i < large.size(); ++i)
        large[i] = char(i * 7 + i / 256);
    putLogo(large);
    EXPECT_FALSE(LesLogo().isEmpty());
    EXPECT_TRUE(content(logoFile()) == large);
}

TEST_F(MPictureTest, ALeftoverFileIsReplacedAndTheFileStaysBehind)
{
    QFile leftover(logoFile());
    ASSERT_TRUE(leftover.open(QIODevice::WriteOnly));
    leftover.write(QByteArray(1000, 'x'));
    leftover.close();
    putLogo(kStored);
    EXPECT_FALSE(LesLogo().isEmpty());
    EXPECT_EQ(content(logoFile()), kStored);
    EXPECT_EQ(QDir(temporary.path()).entryList(QDir::Files), QStringList{u"output.bin"_s});
}

TEST_F(MPictureTest, ALeftoverThatCanBeDeletedAndNotWrittenIsReplaced)
{
    // Unlike a file's rights, a link into a folder that is gone binds a privileged user as well.
    ASSERT_TRUE(QFile::link(temporary.filePath(u"borte/output.bin"_s), logoFile()));
    ASSERT_FALSE(QFile(logoFile()).open(QIODevice::WriteOnly));
    putLogo(kStored);
    EXPECT_FALSE(LesLogo().isEmpty());
    EXPECT_EQ(content(logoFile()), kStored);
}

TEST_F(MPictureTest, WithoutALogoTheFileIsEmpty)
{
    QFile leftover(logoFile());
    ASSERT_TRUE(leftover.open(QIODevice::WriteOnly));
    leftover.write("gammelt");
    leftover.close();
    EXPECT_EQ(LesLogo(), TempMappe() + u"output.bin"_s);
    EXPECT_TRUE(QFileInfo::exists(logoFile()));
    EXPECT_EQ(QFileInfo(logoFile()).size(), 0);
}

TEST_F(MPictureTest, AClientWithoutARowHasNoPathAndNoFile)
{
    run(u"DELETE FROM Klient WHERE KlientNr=5"_s);
    EXPECT_EQ(LesLogo(), QString());
    EXPECT_FALSE(QFileInfo::exists(logoFile()));
}

TEST_F(MPictureTest, ReadsTheRowOfTheActiveClientAlone)
{
    putLogo(kStored);
    gKlient = 6;
    const SessionTap tap;
    EXPECT_FALSE(LesLogo().isEmpty());
    EXPECT_EQ(content(logoFile()), QByteArray());
    EXPECT_EQ(tap.statements(), QStringList{u"SELECT Logo FROM Klient WHERE KlientNr= 6"_s});
}

TEST_F(MPictureTest, AFailedReadLeavesAnEmptyFileAndSaysNothing)
{
    run(u"ALTER TABLE Klient DROP COLUMN Logo"_s);
    EXPECT_EQ(LesLogo(), TempMappe() + u"output.bin"_s);
    EXPECT_TRUE(QFileInfo::exists(logoFile()));
    EXPECT_EQ(QFileInfo(logoFile()).size(), 0);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(MPictureTest, AFileThatCannotBeWrittenIsPassedOver)
{
    putLogo(kStored);
    QDir().mkpath(logoFile() + u"/mappe"_s);
    EXPECT_EQ(LesLogo(), TempMappe() + u"output.bin"_s);
    EXPECT_TRUE(QFileInfo(logoFile()).isDir());
}

TEST_F(MPictureTest, APartOfALogoIsNotTakenForIt)
{
    putLogo(QByteArray(1'000'000, 'x'));
    const FileSizeLimit limit(400'000);
    EXPECT_EQ(LesLogo(), TempMappe() + u"output.bin"_s);
    EXPECT_FALSE(QFileInfo::exists(logoFile()));
}

// --- Writing

TEST_F(MPictureTest, IsStoredWhateverKeyTheClientsTableHas)
{
    for (const QString &key : {QString(), u", CONSTRAINT N PRIMARY KEY (Navn)"_s}) {
        run(u"DROP TABLE Klient"_s);
        run(u"CREATE TABLE Klient (KlientNr SHORT, Navn TEXT(40), Logo LONGBINARY"_s + key + u')');
        run(u"INSERT INTO Klient (KlientNr,Navn) VALUES (5,'Strand')"_s);
        run(u"INSERT INTO Klient (KlientNr,Navn) VALUES (6,'Vik')"_s);
        m_box.setPicture(picture({30, 20}, Qt::blue));
        EXPECT_EQ(said(m_box), QString());
        EXPECT_EQ(QImage::fromData(storedLogo()).size(), QSize(30, 20)) << key.toStdString();
        m_box.setPicture(picture({31, 20}, Qt::red));
        EXPECT_EQ(said(m_box), QString());
        EXPECT_EQ(QImage::fromData(storedLogo()).size(), QSize(31, 20));
    }
}

TEST_F(MPictureTest, APictureIsStoredAsTheSavedFile)
{
    m_box.setPicture(picture(QSize(30, 20), Qt::darkRed));
    const SessionTap tap;
    EXPECT_EQ(said(m_box), QString());
    EXPECT_EQ(tap.statements(),
              QStringList{u"SELECT KlientNr,Logo FROM Klient WHERE KlientNr= 5"_s});
    EXPECT_TRUE(tap.calls().contains(u"writeBack"_s));
    const QByteArray bytes = storedLogo();
    EXPECT_EQ(bytes, content(logoFile()));
    EXPECT_TRUE(bytes.startsWith("BM"));
    EXPECT_EQ(QImage::fromData(bytes).convertToFormat(QImage::Format_RGB32), m_box.picture());
    EXPECT_TRUE(storedLogo(6).isNull());
}

TEST_F(MPictureTest, WritingOverwritesTheFileAndTheColumn)
{
    m_box.setPicture(picture(QSize(300, 200), Qt::darkRed));
    EXPECT_EQ(said(m_box), QString());
    m_box.setPicture(picture(QSize(3, 2), Qt::blue));
    EXPECT_EQ(said(m_box), QString());
    EXPECT_EQ(storedLogo(), content(logoFile()));
    EXPECT_EQ(QImage::fromData(storedLogo()).size(), QSize(3, 2));
}

TEST_F(MPictureTest, WhatIsTransparentIsStoredWhite)
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixelColor(0, 0, QColor(0, 0, 0, 0));
    image.setPixelColor(1, 0, QColor(10, 20, 30));
    m_box.setPicture(image);
    EXPECT_EQ(said(m_box), QString());
    const QImage stored = QImage::fromData(storedLogo());
    EXPECT_EQ(stored.pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(stored.pixelColor(1, 0), QColor(10, 20, 30));
}

TEST_F(MPictureTest, AnEmptyBoxIsTold)
{
    EXPECT_EQ(said(m_box), u"Feil ved lagring av logo: 380 Ugyldig egenskapsverdi"_s);
    EXPECT_TRUE(storedLogo().isNull());
}

TEST_F(MPictureTest, AClientWithoutARowIsTold)
{
    run(u"DELETE FROM Klient WHERE KlientNr=5"_s);
    m_box.setPicture(picture(QSize(3, 2), Qt::blue));
    EXPECT_EQ(said(m_box), u"Feil ved lagring av logo: 3021 Enten BOF eller EOF er sann, eller "
                           u"posten er slettet."_s);
    EXPECT_TRUE(QFileInfo::exists(logoFile()));
}

TEST_F(MPictureTest, AFailedReadOfTheRowIsToldWithoutTheDatabasesText)
{
    run(u"ALTER TABLE Klient DROP COLUMN Logo"_s);
    m_box.setPicture(picture(QSize(3, 2), Qt::blue));
    EXPECT_EQ(said(m_box), u"Feil ved lagring av logo: 91 Objektvariabelen er ikke satt"_s);
    EXPECT_EQ(gDB->LastError(), QString());
}

TEST_F(MPictureTest, AFileThatCannotBeSavedIsTold)
{
    QDir().mkpath(logoFile() + u"/mappe"_s);
    m_box.setPicture(picture(QSize(3, 2), Qt::blue));
    EXPECT_EQ(said(m_box), u"Feil ved lagring av logo: 75 Feil ved tilgang til bane eller fil"_s);
    EXPECT_TRUE(storedLogo().isNull());
}

TEST_F(MPictureTest, ARefusedWriteIsNotToldAndItsTextIsThrownAway)
{
    m_box.setPicture(picture(QSize(3, 2), Qt::blue));
    SessionTap tap;
    tap.fail(u"writeBack"_s);
    EXPECT_EQ(said(m_box), QString());
    EXPECT_TRUE(tap.calls().contains(u"writeBack"_s));
    EXPECT_EQ(gDB->LastError(), QString());
    EXPECT_TRUE(storedLogo().isNull());
}

} // namespace
