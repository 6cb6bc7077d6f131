#pragma once

#include <QtGlobal>

#include <atomic>

/// A C function of a library that is loaded when one of its functions is called first, so that a
/// start is spared it. `find` loads the library and gives the address of the function of that name,
/// or raises.
template<class Function, QFunctionPointer (*find)(const char *)>
class LateFunction
{
public:
    constexpr explicit LateFunction(const char *name) : m_name(name) {}
    LateFunction(const LateFunction &) = delete;
    LateFunction &operator=(const LateFunction &) = delete;

    /// For calls as well.
    operator Function *() const
    {
        Function *function = m_function;
        if (!function)
            m_function = function = reinterpret_cast<Function *>(find(m_name));
        return function;
    }

private:
    const char *m_name;
    mutable std::atomic<Function *> m_function = nullptr;
};
