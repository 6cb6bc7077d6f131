#pragma once

#include "runtime/RunTimeError.h"

#include <memory>
#include <utility>

/// A counted reference to an object, or to none. Following a reference to none raises run-time
/// error 91, so a routine in the passed-over style can go on after it.
template<class T>
class Ref
{
public:
    Ref() = default;
    Ref(std::nullptr_t) {}
    explicit Ref(std::shared_ptr<T> object) : m_object(std::move(object)) {}

    template<class... Args>
    [[nodiscard]] static Ref make(Args &&...args)
    {
        return Ref(std::make_shared<T>(std::forward<Args>(args)...));
    }

    /// True when the reference names an object.
    explicit operator bool() const noexcept { return m_object != nullptr; }
    [[nodiscard]] T *get() const noexcept { return m_object.get(); }
    void reset() noexcept { m_object.reset(); }

    T &operator*() const { return *checked(); }
    T *operator->() const { return checked(); }

    friend bool operator==(const Ref &, const Ref &) = default;

private:
    T *checked() const
    {
        if (!m_object)
            throw RunTimeError(errors::kObjectNotSet);
        return m_object.get();
    }

    std::shared_ptr<T> m_object;
};

/// A reference that makes its object when it is first followed.
template<class T>
class AutoRef
{
public:
    T &operator*() { return *made(); }
    T *operator->() { return made(); }
    /// True when the object has been made; asking does not make it.
    explicit operator bool() const noexcept { return m_object != nullptr; }
    void reset() noexcept { m_object.reset(); }

private:
    T *made()
    {
        if (!m_object)
            m_object = std::make_shared<T>();
        return m_object.get();
    }

    std::shared_ptr<T> m_object;
};
