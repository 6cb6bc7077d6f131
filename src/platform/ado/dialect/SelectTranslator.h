#pragma once

#include "platform/ado/dialect/Emitter.h"

#include <QByteArrayList>

namespace ado::dialect {

/// Translates queries. Use one for one query; the constructor's arguments must outlive it.
class SelectTranslator
{
public:
    SelectTranslator(const std::vector<Token> &tokens, const Catalog &catalog,
                     const Writer &writer);

    /// `query` is annotated on the way.
    [[nodiscard]] Translation translate(Select &query);

private:
    QByteArray from(FromItem &item, bool grouped);
    QByteArray tableSource(const FromItem &item);
    QByteArray join(const FromItem &item);
    Expr *findLookups(Expr &condition);
    void expandStars(Select &query) const;
    void appendColumnsOf(std::vector<SelectItem> &items, size_t source, int token) const;
    void bindAll(Select &query);
    void checkGrouping(const Select &query) const;
    void describe(const Select &query, bool updatable);
    QByteArray itemList(const Select &query);
    QByteArrayList orderList(const Select &query);
    QByteArrayList orderUnasked(const Select &query, bool grouped, QByteArrayList groups) const;
    QByteArrayList keyOrder(const Select &query) const;
    QByteArrayList resultOrder(const Select &query) const;
    QByteArrayList groupOrder(QByteArrayList groups) const;
    int resultNumber(const Expr &expr, const Select &query) const;
    const Expr &meantBy(const OrderItem &item, const Select &query) const;
    void bindOrder(Select &query);

    const std::vector<Token> &m_tokens;
    const Catalog &m_catalog;
    const Writer &m_writer;
    std::vector<Source> m_sources;
    const Expr *m_where = nullptr; // not bound yet where tables are joined
    bool m_firstMayBeNull = false; // a RIGHT JOIN has rows without the table before it
    Translation m_translation;
    Binder m_binder;
    Emitter m_emitter;
};

} // namespace ado::dialect
