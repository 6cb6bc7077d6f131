#pragma once

#include "platform/ado/Support.h"
#include "platform/report/Report.h"
#include "platform/report/ReportError.h"

#include <gtest/gtest.h>

/// What the tests of the report engine share.
namespace report::test {

using namespace Qt::StringLiterals;

/// A small company's database and a folder for report files.
class ReportTest : public testing::Test
{
protected:
    ReportTest();

    /// Runs statements of the desktop dialect.
    void run(const QStringList &statements);
    /// Order `number` of client 1 with so many lines of 100.00 kroner net, 25 % VAT.
    void addOrder(int number, int lines);

    /// Writes a file beside the report file and returns its path.
    QString written(const QString &name, const QByteArray &bytes) const;
    /// A report about the lines of orders: A4, margins of 10 mm, with `bands` below the query.
    [[nodiscard]] static QByteArray lineReport(const QByteArray &bands);
    /// Lays out a report file of that text.
    [[nodiscard]] Document made(const QByteArray &xml, const QString &selection = {},
                                const std::vector<QString> &formulas = {}) const;
    /// The error that `made` raises; number 0 when it raises none.
    [[nodiscard]] RunTimeError errorOf(const QByteArray &xml, const QString &selection = {},
                                       const std::vector<QString> &formulas = {}) const;

    [[nodiscard]] QString dsn() const { return m_database.dsn(); }
    [[nodiscard]] QString folder() const { return m_database.folder(); }

private:
    ado::test::Database m_database;
    int m_orders = 0;
};

/// The page's texts in the order of drawing.
[[nodiscard]] QStringList textsOf(const Page &page);
/// The first text of that content; fails the test when there is none.
[[nodiscard]] TextCommand textOn(const Page &page, const QString &text);

} // namespace report::test
