#include "vert/Options.h"

#include "vert/HostError.h"

#include <QSet>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kDefaultDsn = "demo-ut/strekkbok.db"_L1;

struct OptionText
{
    QLatin1StringView name;
    QStringView value; // what the help calls the option's value; empty for an option without one
    QStringView help;  // lines parted by a line feed
};

constexpr std::array kOptions{
    OptionText{"--dsn"_L1, u"KILDE",
               u"databasen: en fil, en adresse postgresql://…, et navn fra odbc.ini eller en\n"
               u"hel tilkoblingsstreng «dsn=…;…» (uten dette valget: filen\n"
               u"demo-ut/strekkbok.db). Alene starter valget modulen på databasen og\n"
               u"forteller om den ble klar."},
    OptionText{"--klient"_L1, u"NR", u"klientnummer, -32768 til 32767 (1 når det ikke er gitt)"},
    OptionText{"--aar"_L1, u"ÅR",
               u"regnskapsår, 1900 til 9999 (inneværende år når det ikke er gitt)"},
    OptionText{"--demo"_L1,
               {},
               u"lag foreldreprogrammets tabeller og et oppdiktet demofirma i en ny\n"
               u"database, med ordre fra regnskapsåret og året før. En database som har\n"
               u"tabeller, røres ikke."},
    OptionText{"--sql"_L1, u"SETNING",
               u"kjør én setning gjennom gDB, uten å starte modulen. Rader kommer som\n"
               u"tabulatordelt tekst; første linje er kolonnenavn:typekode (2 og 3 heltall,\n"
               u"4 og 5 desimaltall, 6 valuta, 7 dato, 11 sann/usann, 202 tekst, 205 bytes).\n"
               u"Null vises som \\N, tabulator, linjeskift, vognretur og omvendt skråstrek\n"
               u"som \\t, \\n, \\r og \\\\, desimaltegnet er punktum, datoer er åååå-mm-dd."},
    OptionText{"--ehf"_L1, u"NUMMER",
               u"skriv EHF-dokumentet til ordren med dette nummeret, som faktura eller, når\n"
               u"summen er negativ, som kreditnota. Ordren får ikke ny status."},
    OptionText{"--ut"_L1, u"FIL", u"filen som --ehf skriver"},
    OptionText{"--kopier"_L1, u"FRA TIL",
               u"kopier alle tabeller fra en database til en annen, begge navngitt som for\n"
               u"--dsn, for eksempel fra en fil til en tjener. TIL må være en ny fil eller en\n"
               u"database uten tabeller. Alt blir kopiert, kontrollert og lagret under ett,\n"
               u"eller ingenting."},
    OptionText{"--kontroll"_L1,
               {},
               u"kontroller bøkene til klienten i regnskapsåret, uten å endre noe: bilag,\n"
               u"linjer, fakturaer og ordre, og databasefilen selv. Hvert funn er en linje;\n"
               u"uten funn er svaret én linje og status 0."},
    OptionText{"--tur"_L1, u"MAPPE",
               u"gå gjennom skjermbildene med mus og tastatur, på et demofirma i filen\n"
               u"demo.db i denne mappen, og lagre et nummerert bilde av hvert. En demo.db som\n"
               u"finnes, brukes. Trenger ingen skjerm."},
    OptionText{"--erstatt"_L1,
               {},
               u"la --ehf, eller et kall uten oppgave, skrive over EHF-filer som finnes"},
    OptionText{"--help"_L1, {}, u"vis denne teksten"},
};

/// The beginning of a misplaced argument; what follows may be the rest of a connection string.
QString withoutSecrets(QStringView argument)
{
    const auto *const end = std::find_if(argument.begin(), argument.end(), [](QChar c) {
        return c == u':' || c == u'=' || c == u';' || c == u'@';
    });
    return QStringView(argument.begin(), end).toString();
}

[[noreturn]] void usage(const QString &line)
{
    throw HostError(line + u" (se --help)"_s, HostError::kUsage);
}

/// A whole number of plain digits, with a minus sign at most.
int number(QStringView value, QLatin1StringView option, int lowest, int highest)
{
    const QStringView digits = value.startsWith(u'-') ? value.sliced(1) : value;
    const bool isPlain =
        std::all_of(digits.begin(), digits.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    bool isNumber = false;
    const qlonglong parsed = value.toLongLong(&isNumber);
    if (!isPlain || !isNumber || parsed < lowest || parsed > highest) {
        usage(u"%1 må være et heltall fra %2 til %3, ikke «%4»"_s.arg(option)
                  .arg(lowest)
                  .arg(highest)
                  .arg(withoutSecrets(value)));
    }
    return int(parsed);
}

void setTask(Options &options, Options::Task task, bool &isSet)
{
    if (isSet)
        usage(u"bare ett av valgene --demo, --sql, --ehf, --kopier, --kontroll og --tur kan gis"_s);
    isSet = true;
    options.task = task;
}

} // namespace

Options parseOptions(const QStringList &arguments, int thisYear)
{
    Options options;
    options.aar = qint16(thisYear);
    bool hasTask = false;
    QSet<QString> given;

    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const qsizetype equals = arguments[i].indexOf(u'=');
        const bool hasValue = arguments[i].startsWith("--"_L1) && equals > 0;
        const QString name = hasValue ? arguments[i].left(equals) : arguments[i];

        const auto *option = std::find_if(kOptions.begin(), kOptions.end(),
                                          [&](const auto &o) { return o.name == name; });
        if (option == kOptions.end())
            usage(u"ukjent valg %1"_s.arg(withoutSecrets(name)));
        if (given.contains(name))
            usage(u"valget %1 er gitt to ganger"_s.arg(name));
        given.insert(name);

        QString value;
        if (option->value.isEmpty()) {
            if (hasValue)
                usage(u"valget %1 tar ingen verdi"_s.arg(name));
        } else if (hasValue) {
            value = arguments[i].mid(equals + 1);
        } else if (i + 1 < arguments.size()) {
            value = arguments[++i];
        } else {
            usage(u"valget %1 mangler verdien %2"_s.arg(name, option->value));
        }
        if (!option->value.isEmpty() && value.isEmpty())
            usage(u"valget %1 har en tom verdi"_s.arg(name));

        if (name == "--help"_L1) {
            options.task = Options::Task::Help;
            return options;
        }
        if (name == "--dsn"_L1)
            options.dsn = value;
        else if (name == "--klient"_L1)
            options.klient = qint16(number(value, option->name, -32768, 32767));
        else if (name == "--aar"_L1)
            options.aar = qint16(number(value, option->name, 1900, 9999));
        else if (name == "--demo"_L1)
            setTask(options, Options::Task::Demo, hasTask);
        else if (name == "--sql"_L1) {
            setTask(options, Options::Task::Sql, hasTask);
            options.statement = value;
        } else if (name == "--ehf"_L1) {
            setTask(options, Options::Task::Ehf, hasTask);
            options.ordreNr = number(value, option->name, 1, 2147483647);
        } else if (name == "--kopier"_L1) {
            setTask(options, Options::Task::Copy, hasTask);
            options.fra = value;
            if (i + 1 == arguments.size() || arguments[i + 1].isEmpty())
                usage(u"valget %1 mangler verdien TIL"_s.arg(name));
            options.til = arguments[++i];
        } else if (name == "--kontroll"_L1) {
            setTask(options, Options::Task::Check, hasTask);
        } else if (name == "--tur"_L1) {
            setTask(options, Options::Task::Screens, hasTask);
            options.mappe = value;
        } else if (name == "--ut"_L1)
            options.ut = value;
        else if (name == "--erstatt"_L1)
            options.erstatt = true;
    }

    if (!hasTask && given.contains(u"--dsn"_s))
        options.task = Options::Task::Start;
    if (options.task == Options::Task::Copy && given.contains(u"--dsn"_s))
        usage(u"--kopier navngir selv databasene, uten --dsn"_s);
    if (options.task == Options::Task::Screens && given.contains(u"--dsn"_s))
        usage(u"--tur har sin egen database, uten --dsn"_s);
    if (options.dsn.isEmpty())
        options.dsn = kDefaultDsn;
    if ((options.task == Options::Task::Ehf) != given.contains(u"--ut"_s))
        usage(u"--ehf og --ut må gis sammen"_s);
    if (options.erstatt && options.task != Options::Task::Ehf &&
        options.task != Options::Task::Tour)
        usage(u"--erstatt gjelder bare --ehf og kall uten oppgave"_s);
    return options;
}

QString helpText()
{
    QString text =
        u"Bruk: strekkbok-vert [VALG]\n\n"
        u"Spiller foreldreprogrammet for fakturamodulen Regningsdel: laster komponenten fra\n"
        u"filen sin, gir den forbindelse, klient og år, og starter den. Uten oppgave lages et\n"
        u"demofirma i mappen demo-ut der du står, modulen startes på det, og en faktura og en\n"
        u"kreditnota skrives som EHF-filer. Finnes databasen der fra før, brukes den. På en\n"
        u"maskin med skjerm blir hovedmenyen stående til den lukkes.\n\n"
        u"Valg:\n"_s;
    constexpr int kIndent = 20;
    for (const OptionText &option : kOptions) {
        QString head = u"  "_s + option.name;
        if (!option.value.isEmpty())
            head += u' ' + option.value.toString();
        text += head.leftJustified(kIndent);
        text += option.help.toString().replace(u'\n', u'\n' + QString(kIndent, u' '));
        text += u'\n';
    }
    text += u"\nStatus: 0 når alt gikk bra, 1 når noe ikke lot seg gjøre, 2 når valgene ikke gir "
            u"mening,\n3 når ingen skjerm svarer der vinduer skal vises.\n"_s;
    return text;
}
