#pragma once

#include "platform/ado/dialect/Binder.h"
#include "platform/ado/dialect/Translator.h"
#include "platform/ado/dialect/Writer.h"

#include <vector>

namespace ado::dialect {

/// Spells bound expressions by a writer and collects the parameters on the way. Each literal may be
/// emitted once. All arguments of the constructor must outlive the emitter.
class Emitter
{
public:
    Emitter(const std::vector<Token> &tokens, const std::vector<Source> &sources,
            const Writer &writer, std::vector<Parameter> &parameters)
        : m_tokens(tokens), m_sources(sources), m_writer(writer), m_parameters(parameters)
    {
    }

    /// In its own type, fit to be part of a larger expression.
    [[nodiscard]] QByteArray operand(const Expr &expr) { return operand(expr, expr.type); }
    /// As a condition that stands alone behind WHERE, HAVING or ON.
    [[nodiscard]] QByteArray condition(const Expr &expr);
    /// As the new value of a column. Raises kTypeMismatch when the column cannot take it.
    [[nodiscard]] QByteArray assigned(const Expr &expr, const ColumnInfo &column);

private:
    QByteArray operand(const Expr &expr, DataType wanted);
    QByteArray comparand(const Expr &expr, DataType type);
    QByteArray spelled(const Expr &expr);
    QByteArray chain(const Expr &expr, const char *sign);
    QByteArray compared(const Expr &expr);
    QByteArray reckoned(const Expr &expr, DataType type);
    QByteArray arithmetic(const Expr &expr);
    QByteArray aggregate(const Expr &expr);
    QByteArray converted(const QByteArray &operand, DataType from, DataType to) const;
    QByteArray parameter(const Expr &literal, DataType type, int width = 0, QString column = {});
    const Token &tokenOf(const Expr &expr) const { return m_tokens[size_t(expr.token)]; }

    const std::vector<Token> &m_tokens;
    const std::vector<Source> &m_sources;
    const Writer &m_writer;
    std::vector<Parameter> &m_parameters;
};

} // namespace ado::dialect
