#include "platform/forms/OuterRim.h"

#include "platform/forms/MsgBox.h"
#include "runtime/RunTimeError.h"

#include <QPointer>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

int runningHandlers = 0;
std::vector<QPointer<QObject>> waiting; // for the handlers to return

} // namespace

void showUntrapped(const std::exception &error)
{
    const auto *runTimeError = dynamic_cast<const RunTimeError *>(&error);
    MsgBox(runTimeError ? u"Kjørefeil "_s + QString::number(runTimeError->number()) + u":\n\n"_s +
                              runTimeError->description()
                        : u"Intern feil:\n\n"_s + QString::fromUtf8(error.what()),
           msgbox::kCritical);
}

RunningHandler::RunningHandler()
{
    ++runningHandlers;
}

RunningHandler::~RunningHandler()
{
    if (--runningHandlers > 0)
        return;
    for (const QPointer<QObject> &object : std::exchange(waiting, {})) {
        if (object)
            object->deleteLater();
    }
}

void deleteAfterHandlers(QObject *object)
{
    if (runningHandlers > 0)
        waiting.emplace_back(object);
    else
        object->deleteLater();
}
