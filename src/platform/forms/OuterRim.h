#pragma once

#include <QObject>

#include <functional>
#include <type_traits>
#include <utility>

/// Tells the user of a failure that no routine has trapped: error number and description in a
/// critical message box.
void showUntrapped(const std::exception &error);

/// Deletes `object` from the event loop as soon as no handler at the outer rim is running. A
/// handler that shows a message box or a modal form has an event loop above it, and what is
/// unloaded there may be the very thing that the handler goes on with. An object that is deleted
/// otherwise in the meantime is let go.
void deleteAfterHandlers(QObject *object);

/// A handler at the outer rim is running while this lives.
class RunningHandler
{
public:
    RunningHandler();
    ~RunningHandler();
    RunningHandler(const RunningHandler &) = delete;
    RunningHandler &operator=(const RunningHandler &) = delete;
};

/// Runs an event handler at the outer rim: a failure that reaches this place is shown to the user
/// and ends here. Nothing may fall through to the event loop, which belongs to the parent program.
/// Returns false when the handler failed.
template<class Handler>
bool atOuterRim(Handler &&handler)
{
    const RunningHandler running;
    try {
        std::forward<Handler>(handler)();
        return true;
    } catch (const std::exception &error) {
        showUntrapped(error);
        return false;
    }
}

/// Calls `handler` with all the arguments, or with none when it takes none.
template<class Handler, class... Arguments>
void callWithAllOrNone(Handler &handler, const Arguments &...arguments)
{
    if constexpr (std::is_invocable_v<Handler &, const Arguments &...>)
        std::invoke(handler, arguments...);
    else
        std::invoke(handler);
}

/// Connects a control's event to its handler, at the outer rim. `handler` takes all arguments of
/// the signal, or none; the connection ends with `context`.
template<class Sender, class Signal, class Handler>
QMetaObject::Connection onEvent(const Sender *sender, Signal signal, const QObject *context,
                                Handler handler)
{
    return QObject::connect(
        sender, signal, context,
        [handler = std::move(handler)](const auto &...arguments) mutable -> void {
            atOuterRim([&] { callWithAllOrNone(handler, arguments...); });
        });
}
