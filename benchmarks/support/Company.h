#pragma once

#include "benchmarks/support/Database.h"

namespace bench {

/// The rows of client 5, in the tables of a started module: as few of everything as a company can
/// have, to grow one by one. The lines of an order have three VAT rates, its customer and its
/// products are among the first 25, and its number and its ID are the same.
class Company
{
public:
    static constexpr int kFewProducts = 25;
    static constexpr int kFewCustomers = 25;
    static constexpr int kFewPostalCodes = 50;
    static constexpr int kFewOrders = 60;
    static constexpr int kLines = 10;

    /// The client with as few of everything, and no voucher.
    explicit Company(Database &database, int linesOfAnOrder = kLines);

    // Each makes as many as are missing to `count`.
    void growProducts(int count);
    void growCustomers(int count);
    void growPostalCodes(int count);
    void growOrders(int count);
    /// The lines of order 1.
    void growLines(int count);
    /// Vouchers of the year 2014, or of the years before.
    void growVouchers(int count);
    void growOldVouchers(int count);

    /// Puts the orders up to that number in a status.
    void setStatus(const QByteArray &status, int upTo);

    [[nodiscard]] int orders() const { return m_orders; }
    [[nodiscard]] Database &database() { return m_database; }

private:
    /// Inserts what `select` makes of the numbers n.i from `first` to `last`.
    void insert(int first, int last, const QByteArray &into, const QByteArray &select);
    void insertLines(const QByteArray &orders, int first, int last);
    /// VAT, net and what is to be paid of an order of so many lines, rounded to whole kroner.
    [[nodiscard]] QByteArray sumsOf(int lines) const;
    void insertVouchers(int first, int last, const QByteArray &year);

    Database &m_database;
    const int m_linesOfAnOrder;
    int m_products = 0;
    int m_customers = 0;
    int m_postalCodes = 0;
    int m_orders = 0;
    int m_lines; // of order 1
    int m_vouchers = 0;
    int m_oldVouchers = 0;
};

} // namespace bench
