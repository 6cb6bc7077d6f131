// Any bytes as a file of settings: it is read without a fault, and what is written into it comes
// back while every other value stays as it was.

#include "platform/registry/IniFile.h"
#include "platform/registry/Registry.h"
#include "runtime/CodePage.h"

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace registry;

namespace {

[[noreturn]] void fail(const char *what, const IniFile &file)
{
    std::fprintf(stderr, "%s\n%s\n", what, file.toBytes().constData());
    std::abort();
}

/// The next part of the input, up to a zero byte.
QByteArray takePart(QByteArray &input)
{
    const qsizetype end = input.indexOf('\0');
    const QByteArray part = end < 0 ? input : input.first(end);
    input = end < 0 ? QByteArray() : input.sliced(end + 1);
    return part;
}

bool isSame(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace

// The input is a key, a value's name, its type in one byte with its data, and the file, each but
// the file ended by a zero byte.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray input(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString key = codepage::decode(takePart(input));
    const QString name = codepage::decode(takePart(input));
    const QByteArray typed = takePart(input);
    const StoredValue value{typed.isEmpty() ? REG_SZ : quint32(uchar(typed[0])), typed.mid(1)};

    IniFile file = IniFile::fromBytes(input);

    const QString neighbourKey = isSame(key, u"Regningsdel"_s) ? u"Annet"_s : u"Regningsdel"_s;
    const auto neighbour = file.value(neighbourKey, u"Avrunding"_s);
    file.setValue(key, name, value);
    const IniFile stored = IniFile::fromBytes(file.toBytes());
    if (!stored.hasKey(key) || stored.value(key, name) != std::optional(value))
        fail("the value does not come back", stored);
    if (stored.value(neighbourKey, u"Avrunding"_s) != neighbour)
        fail("another value has changed", stored);

    file = stored;
    if (!file.removeValue(key, name) || IniFile::fromBytes(file.toBytes()).value(key, name))
        fail("the value is still there", file);
    file.removeKey(key);
    const IniFile removed = IniFile::fromBytes(file.toBytes());
    if (!key.isEmpty() && !removed.hasSubkeys(key) && removed.hasKey(key))
        fail("the key is still there", removed);
    if (removed.value(neighbourKey, u"Avrunding"_s) != neighbour)
        fail("a removed key took another value along", removed);
    return 0;
}
