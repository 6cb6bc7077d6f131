#pragma once

#include <cstdio>
#include <string>

namespace bench {

/// What a measurement is to keep within. A ratio to the yardstick of the same run is the same on
/// any machine; an amount is for what no machine decides, like memory, or for what a user feels.
class Aim
{
public:
    [[nodiscard]] static Aim none() { return {Kind::None, 0}; }
    [[nodiscard]] static Aim ratioAtMost(double limit) { return {Kind::RatioAtMost, limit}; }
    [[nodiscard]] static Aim ratioAtLeast(double limit) { return {Kind::RatioAtLeast, limit}; }
    [[nodiscard]] static Aim valueAtMost(double limit) { return {Kind::ValueAtMost, limit}; }

    [[nodiscard]] bool isMissed(double value, double ratio) const
    {
        switch (m_kind) {
        case Kind::RatioAtMost:
            return ratio > m_limit;
        case Kind::RatioAtLeast:
            return ratio < m_limit;
        case Kind::ValueAtMost:
            return value > m_limit;
        case Kind::None:
            break;
        }
        return false;
    }

    /// Such as "<= 1.3 x" or "<= 16 ms".
    [[nodiscard]] std::string text(const char *unit) const
    {
        if (m_kind == Kind::None)
            return "-";
        char text[64];
        std::snprintf(text, sizeof text, "%s %g %s",
                      m_kind == Kind::RatioAtLeast ? ">=" : "<=", m_limit,
                      m_kind == Kind::ValueAtMost ? unit : "x");
        return text;
    }

private:
    enum class Kind { None, RatioAtMost, RatioAtLeast, ValueAtMost };

    Aim(Kind kind, double limit) : m_kind(kind), m_limit(limit) {}

    Kind m_kind;
    double m_limit;
};

} // namespace bench
