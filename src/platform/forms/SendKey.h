#pragma once

#include <Qt>

/// Sends a key to the control that has the focus, as if typed: it is delivered from the event loop,
/// after the running handler has returned, to the control that has the focus then.
void sendKey(Qt::Key key);
