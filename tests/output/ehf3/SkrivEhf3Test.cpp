#include "output/ehf3/Ehf3Test.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

class SkrivEhf3Test : public Ehf3Test
{
protected:
    SkrivEhf3Test()
    {
        QDir(folder()).mkdir(u"ut"_s);
        enterOrder(1, u"125"_s, {{u"'S1'"_s, u"'Pall'"_s, u"1"_s, u"100"_s, u"25"_s, u"100"_s}});
    }

    [[nodiscard]] QString target() const { return folder() + u"/ut/faktura.xml"_s; }
    [[nodiscard]] QStringList files() const
    {
        return QDir(folder() + u"/ut"_s).entryList(QDir::Files | QDir::Hidden);
    }
    [[nodiscard]] QByteArray content() const
    {
        QFile file(target());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
};

TEST_F(SkrivEhf3Test, TheFileIsTheDocumentAndNothingOfTheOrderChanges)
{
    const QStringList before =
        rows(u"SELECT * FROM Ordre"_s) + rows(u"SELECT * FROM OrdreLinjer"_s);
    EXPECT_EQ(Ehf3Skriver(5).skriv(1, target()), QString());
    EXPECT_EQ(content(), document(1));
    EXPECT_EQ(files(), QStringList{u"faktura.xml"_s});
    EXPECT_EQ(rows(u"SELECT * FROM Ordre"_s) + rows(u"SELECT * FROM OrdreLinjer"_s), before);
}

TEST_F(SkrivEhf3Test, WhereSomethingIsMissingTheFormerFileStays)
{
    EXPECT_EQ(Ehf3Skriver(5).skriv(1, target()), QString());
    const QByteArray before = content();
    change(1, u"LevDato=Null"_s);
    EXPECT_EQ(Ehf3Skriver(5).skriv(1, target()),
              u"Ordre 1 mangler leveringsdato; rettes i ordrebildet"_s);
    EXPECT_EQ(content(), before);
    EXPECT_EQ(files(), QStringList{u"faktura.xml"_s});
}

TEST_F(SkrivEhf3Test, AFileThatCannotBeWrittenIsTold)
{
    const QString nowhere = folder() + u"/borte/faktura.xml"_s;
    EXPECT_EQ(Ehf3Skriver(5).skriv(1, nowhere), u"Filen %1 lot seg ikke skrive"_s.arg(nowhere));
    EXPECT_EQ(Ehf3Skriver(5).skriv(1, folder()), u"Filen %1 lot seg ikke skrive"_s.arg(folder()));
}

} // namespace
