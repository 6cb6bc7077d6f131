#include "host/program/HostTest.h"

#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// In the demo company 1048 is an invoice that is issued, 1053 an order, and 1045 a credit note.
class PdfTaskTest : public HostTest
{
protected:
    void SetUp() override { makeDemo(); }

    [[nodiscard]] Outcome pdf(const QStringList &arguments) const
    {
        return host(QStringList{u"--dsn"_s, u"demo.db"_s} + arguments);
    }
    /// What a reader copies out of the file.
    [[nodiscard]] QString textOf(const QString &name) const
    {
        return QString::fromUtf8(start(u"pdftotext"_s, {u"-layout"_s, path(name), u"-"_s}).out)
            .replace(QChar(QChar::Nbsp), u' ');
    }
    [[nodiscard]] QStringList pdfsIn(const QString &folder) const
    {
        return QDir(path(folder)).entryList({u"*.pdf"_s}, QDir::Files, QDir::Name);
    }
};

TEST_F(PdfTaskTest, AnInvoiceIsWrittenAndNothingElseChanges)
{
    const QByteArray before = dump(u"demo.db"_s);
    const Outcome outcome = pdf({u"--pdf"_s, u"1048"_s, u"--ut"_s, u"ut.pdf"_s});
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_EQ(outcome.out, QByteArray("PDF skrevet: ut.pdf\n"));
    EXPECT_EQ(outcome.err, QString());
    EXPECT_EQ(dump(u"demo.db"_s), before);
    const QString text = textOf(u"ut.pdf"_s);
    EXPECT_TRUE(text.contains(u"FAKTURA"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"KOPI"_s)) << "the invoice was issued before";
    EXPECT_TRUE(text.contains(u"1048"_s));
    EXPECT_TRUE(text.contains(u"GIRO"_s)) << "the form of a company that never chose one";
}

TEST_F(PdfTaskTest, TheFileTellsWhatItIsAndItsTextCanBeCopied)
{
    ASSERT_EQ(pdf({u"--pdf"_s, u"1048"_s, u"--ut"_s, u"ut.pdf"_s}).status, 0);
    const QString info = QString::fromUtf8(start(u"pdfinfo"_s, {path(u"ut.pdf"_s)}).out);
    for (const QString &line : {u"Title: +Faktura-1048\n"_s, u"Author: +Gråbein Bilfrakt AS\n"_s,
                                u"Creator: +Regningsdel\n"_s, u"CreationDate: +.*20\\d\\d"_s})
        EXPECT_TRUE(info.contains(QRegularExpression(line))) << info.toStdString();
    // Every font is embedded, as a subset, with the letters that its glyphs stand for.
    const QStringList fonts = QString::fromUtf8(start(u"pdffonts"_s, {path(u"ut.pdf"_s)}).out)
                                  .split(u'\n', Qt::SkipEmptyParts)
                                  .mid(2);
    ASSERT_EQ(fonts.size(), 3);
    for (const QString &font : fonts)
        EXPECT_TRUE(font.contains(u" yes yes yes "_s)) << font.toStdString();
    const QString text =
        QString::fromUtf8(start(u"pdftotext"_s, {u"-raw"_s, path(u"ut.pdf"_s), u"-"_s}).out)
            .replace(QChar(QChar::Nbsp), u' ');
    EXPECT_TRUE(text.contains(u"U600 Transport til utlandet 1 stk 14 500,00 0 % 14 500,00\n"_s))
        << text.toStdString();
    EXPECT_TRUE(text.contains(u"Tromsø Sjømat AS\nTerminalen 2\nStakkevegen 60\n9008 Tromsø\n"_s));
}

TEST_F(PdfTaskTest, AnOrderIsAnOriginalAndACreditNoteIsOne)
{
    ASSERT_EQ(pdf({u"--pdf"_s, u"1053"_s, u"--ut"_s, u"ordre.pdf"_s}).status, 0);
    EXPECT_FALSE(textOf(u"ordre.pdf"_s).contains(u"KOPI"_s));
    ASSERT_EQ(pdf({u"--pdf"_s, u"1045"_s, u"--ut"_s, u"kredit.pdf"_s}).status, 0);
    EXPECT_TRUE(textOf(u"kredit.pdf"_s).contains(u"KREDITNOTA"_s));
}

TEST_F(PdfTaskTest, AFileThatIsThereIsReplacedOnDemandOnly)
{
    write(u"ut.pdf"_s, "mitt");
    expectRefusal(pdf({u"--pdf"_s, u"1048"_s, u"--ut"_s, u"ut.pdf"_s}), 1, u"--erstatt"_s);
    EXPECT_EQ(content(u"ut.pdf"_s), QByteArray("mitt"));
    EXPECT_EQ(pdf({u"--pdf"_s, u"1048"_s, u"--ut"_s, u"ut.pdf"_s, u"--erstatt"_s}).status, 0);
    EXPECT_TRUE(content(u"ut.pdf"_s).startsWith("%PDF"));
    expectRefusal(pdf({u"--pdf"_s, u"1048"_s, u"--ut"_s, u"demo.db"_s, u"--erstatt"_s}), 1,
                  u"hører til databasen"_s);
    expectRefusal(pdf({u"--pdf"_s, u"9999"_s, u"--ut"_s, u"x.pdf"_s}), 1,
                  u"ordre 9999 finnes ikke"_s);
}

TEST_F(PdfTaskTest, AllOfAPeriodAndAStatusGoToAFolder)
{
    QDir(path(QString())).mkdir(u"ut"_s);
    const Outcome outcome =
        pdf({u"--pdf-alle"_s, u"ut"_s, u"--fra"_s, u"2014-06-01"_s, u"--til"_s, u"2014-07-15"_s});
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    const auto expected =
        rows(u"SELECT OrdreNr,SumBrutto FROM Ordre WHERE OrdreStatus<>'Ordre' AND "
             "FakDato>=#06/01/2014# AND FakDato<=#07/15/2014# ORDER BY OrdreNr"_s);
    ASSERT_GT(expected.size(), 2u);
    QStringList names;
    for (const Row &row : expected) {
        names += (row[u"SumBrutto"_s].startsWith(u'-') ? u"Kreditnota-"_s : u"Faktura-"_s) +
                 row[u"OrdreNr"_s] + u".pdf"_s;
        EXPECT_TRUE(outcome.out.contains(": " + names.last().toUtf8() + '\n'));
    }
    names.sort();
    EXPECT_EQ(pdfsIn(u"ut"_s), names);
    EXPECT_TRUE(outcome.out.startsWith("1 av "));
    EXPECT_TRUE(outcome.out.endsWith("Skrevet: " + QByteArray::number(names.size()) + '\n'));
}

TEST_F(PdfTaskTest, OneStatusAlone)
{
    QDir(path(QString())).mkdir(u"ut"_s);
    const Outcome outcome = pdf({u"--pdf-alle"_s, u"ut"_s, u"--status"_s, u"Ordre"_s});
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_EQ(pdfsIn(u"ut"_s).size(),
              single(u"SELECT Count(ID) FROM Ordre WHERE OrdreStatus='Ordre'"_s).toInt());
}

TEST_F(PdfTaskTest, ARefusalIsToldAndTheOthersAreWritten)
{
    QDir(path(QString())).mkdir(u"ut"_s);
    write(u"ut/Faktura-1048.pdf"_s, "mitt");
    const Outcome outcome =
        pdf({u"--pdf-alle"_s, u"ut"_s, u"--fra"_s, u"2014-06-01"_s, u"--til"_s, u"2014-12-31"_s});
    EXPECT_EQ(outcome.status, 1) << ::testing::PrintToString(outcome);
    EXPECT_TRUE(outcome.err.contains(u": 1 av "_s)) << outcome.err.toStdString();
    EXPECT_TRUE(QString::fromUtf8(outcome.out).contains(u"Faktura-1048.pdf finnes fra før"_s));
    EXPECT_EQ(content(u"ut/Faktura-1048.pdf"_s), QByteArray("mitt"));
    EXPECT_GT(pdfsIn(u"ut"_s).size(), 5);
    expectRefusal(pdf({u"--pdf-alle"_s, u"borte"_s}), 1, u"mappen borte finnes ikke"_s);
    expectRefusal(
        pdf({u"--pdf-alle"_s, u"ut"_s, u"--fra"_s, u"1999-01-01"_s, u"--til"_s, u"1999-12-31"_s}),
        1, u"utvalget har ingen fakturaer"_s);
}

TEST_F(PdfTaskTest, AMachineWithoutFontsIsRefusedAndNoFileIsLeft)
{
    write(u"fonts.conf"_s,
          "<fontconfig><cachedir>" + path(u"lager"_s).toUtf8() + "</cachedir></fontconfig>");
    environment.insert(u"FONTCONFIG_FILE"_s, path(u"fonts.conf"_s));
    expectRefusal(pdf({u"--pdf"_s, u"1048"_s, u"--ut"_s, u"ut.pdf"_s}), 1,
                  u"maskinen har ingen skrifter"_s);
    EXPECT_FALSE(files().contains(u"ut.pdf"_s));
}

} // namespace
