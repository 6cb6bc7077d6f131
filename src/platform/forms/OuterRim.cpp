#include "platform/forms/OuterRim.h"

#include "platform/forms/MsgBox.h"
#include "runtime/RunTimeError.h"

using namespace Qt::StringLiterals;

void showUntrapped(const std::exception &error)
{
    const auto *runTimeError = dynamic_cast<const RunTimeError *>(&error);
    MsgBox(runTimeError ? u"Kjørefeil "_s + QString::number(runTimeError->number()) + u":\n\n"_s +
                              runTimeError->description()
                        : u"Intern feil:\n\n"_s + QString::fromUtf8(error.what()),
           msgbox::kCritical);
}
