#include "host/tasks/Options.h"

#include "host/tasks/HostError.h"
#include "rules/Ordre.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kDefaultDsn = "demo-ut/strekkbok.db"_L1;

constexpr int kHighestOrder = 2147483647;

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

QDate day(QStringView value, QLatin1StringView option)
{
    const QDate date = QDate::fromString(value.toString(), Qt::ISODate);
    constexpr int kFirstYear = 100; // of the database's dates
    if (!date.isValid() || value.size() != 10 || date.year() < kFirstYear)
        usage(u"%1 må være en dato som 2026-01-31, ikke «%2»"_s.arg(option, withoutSecrets(value)));
    return date;
}

QString status(QStringView value)
{
    using namespace ordrestatus;
    const std::array all{kOrdre, kFakturert, kBokfort, kBetalt};
    if (std::find(all.begin(), all.end(), value) == all.end()) {
        usage(u"--status må være Ordre, Fakturert, Bokført eller Betalt, ikke «%1»"_s.arg(
            withoutSecrets(value)));
    }
    return value.toString();
}

using Task = Options::Task;

struct Option
{
    QLatin1StringView name;
    QStringView values; // what the help calls them, parted by a blank; empty for none
    QStringView help;   // lines parted by a line feed
    std::optional<Task> task;
    void (*take)(Options &options, QLatin1StringView option, const QStringList &values);
};

void takeNothing(Options &, QLatin1StringView, const QStringList &) {}

/// A task that goes before all others.
template<Task task>
void takeTelling(Options &options, QLatin1StringView, const QStringList &)
{
    options.task = task;
}

template<QString Options::*field>
void takeText(Options &options, QLatin1StringView, const QStringList &values)
{
    options.*field = values[0];
}

template<QDate Options::*field>
void takeDay(Options &options, QLatin1StringView option, const QStringList &values)
{
    options.*field = day(values[0], option);
}

template<class Whole, Whole Options::*field, int lowest, int highest>
void takeNumber(Options &options, QLatin1StringView option, const QStringList &values)
{
    options.*field = Whole(number(values[0], option, lowest, highest));
}

constexpr auto takeOrderNumber = takeNumber<qint32, &Options::ordreNr, 1, kHighestOrder>;

constexpr std::array kOptions{
    Option{"--dsn"_L1, u"KILDE",
           u"databasen: en fil, en adresse postgresql://…, et navn fra odbc.ini eller en\n"
           u"hel tilkoblingsstreng «dsn=…;…» (uten dette valget: filen\n"
           u"demo-ut/strekkbok.db). Alene starter valget modulen på databasen og\n"
           u"forteller om den ble klar.",
           std::nullopt, takeText<&Options::dsn>},
    Option{"--klient"_L1, u"NR", u"klientnummer, -32768 til 32767 (1 når det ikke er gitt)",
           std::nullopt, takeNumber<qint16, &Options::klient, -32768, 32767>},
    Option{"--aar"_L1, u"ÅR", u"regnskapsår, 1900 til 9999 (inneværende år når det ikke er gitt)",
           std::nullopt, takeNumber<qint16, &Options::aar, 1900, 9999>},
    Option{"--demo"_L1,
           {},
           u"lag foreldreprogrammets tabeller og et oppdiktet demofirma i en ny\n"
           u"database, med ordre fra regnskapsåret og året før. En database som har\n"
           u"tabeller, røres ikke.",
           Task::Demo,
           takeNothing},
    Option{"--sql"_L1, u"SETNING",
           u"kjør én setning gjennom gDB, uten å starte modulen. Rader kommer som\n"
           u"tabulatordelt tekst; første linje er kolonnenavn:typekode (2 og 3 heltall,\n"
           u"4 og 5 desimaltall, 6 valuta, 7 dato, 11 sann/usann, 202 tekst, 205 bytes).\n"
           u"Null vises som \\N, tabulator, linjeskift, vognretur og omvendt skråstrek\n"
           u"som \\t, \\n, \\r og \\\\, desimaltegnet er punktum, datoer er åååå-mm-dd.",
           Task::Sql, takeText<&Options::statement>},
    Option{"--ehf"_L1, u"NUMMER",
           u"skriv EHF-dokumentet til ordren med dette nummeret, som faktura eller, når\n"
           u"summen er negativ, som kreditnota. Ordren får ikke ny status.",
           Task::Ehf, takeOrderNumber},
    Option{"--ehf3"_L1, u"NUMMER",
           u"skriv ordren med dette nummeret som EHF 3.0, den elektroniske fakturaen som\n"
           u"norske mottakere tar i dag. Mangler noe, blir det fortalt, og ingen fil\n"
           u"skrevet. Ordren får ikke ny status.",
           Task::Ehf3, takeOrderNumber},
    Option{"--ehf3-alle"_L1, u"MAPPE",
           u"skriv alle fakturaer og kreditnotaer som EHF 3.0 i denne mappen, hver til\n"
           u"sin fil. Velg blant dem med --fra, --til og --status.",
           Task::AllEhf3, takeText<&Options::mappe>},
    Option{"--pdf"_L1, u"NUMMER",
           u"skriv ordren med dette nummeret som PDF, på blanketten fra innstillingene:\n"
           u"original når den ikke er fakturert, ellers kopi. Ordren får ikke ny status.",
           Task::Pdf, takeOrderNumber},
    Option{"--pdf-alle"_L1, u"MAPPE",
           u"skriv alle fakturaer og kreditnotaer som PDF i denne mappen, hver til sin\n"
           u"fil. Velg blant dem med --fra, --til og --status.",
           Task::AllPdf, takeText<&Options::mappe>},
    Option{"--fra"_L1, u"DATO", u"første fakturadato for --pdf-alle og --ehf3-alle, åååå-mm-dd",
           std::nullopt, takeDay<&Options::fraDato>},
    Option{"--til"_L1, u"DATO", u"siste fakturadato for --pdf-alle og --ehf3-alle, åååå-mm-dd",
           std::nullopt, takeDay<&Options::tilDato>},
    Option{"--status"_L1, u"STATUS",
           u"bare denne statusen for --pdf-alle og --ehf3-alle: Ordre, Fakturert, Bokført\n"
           u"eller Betalt (uten dette valget: alle unntatt Ordre)",
           std::nullopt,
           [](Options &options, QLatin1StringView, const QStringList &values) {
               options.status = status(values[0]);
           }},
    Option{"--ut"_L1, u"FIL", u"filen som --ehf, --ehf3 eller --pdf skriver", std::nullopt,
           takeText<&Options::ut>},
    Option{"--kopier"_L1, u"FRA TIL",
           u"kopier alle tabeller fra en database til en annen, begge navngitt som for\n"
           u"--dsn, for eksempel fra en fil til en tjener. TIL må være en ny fil eller en\n"
           u"database uten tabeller. Alt blir kopiert, kontrollert og lagret under ett,\n"
           u"eller ingenting.",
           Task::Copy,
           [](Options &options, QLatin1StringView, const QStringList &values) {
               options.fra = values[0];
               options.til = values[1];
           }},
    Option{"--kontroll"_L1,
           {},
           u"kontroller bøkene til klienten i regnskapsåret, uten å endre noe: bilag,\n"
           u"linjer, fakturaer og ordre, og databasefilen selv. Hvert funn er en linje;\n"
           u"uten funn er svaret én linje og status 0.",
           Task::Check,
           takeNothing},
    Option{"--tur"_L1, u"MAPPE",
           u"gå gjennom skjermbildene med mus og tastatur, på et demofirma i filen\n"
           u"demo.db i denne mappen, og lagre et nummerert bilde av hvert. En demo.db som\n"
           u"finnes, brukes. Trenger ingen skjerm.",
           Task::Screens, takeText<&Options::mappe>},
    Option{
        "--erstatt"_L1,
        {},
        u"la --ehf, --ehf3, --ehf3-alle, --pdf, --pdf-alle eller et kall uten oppgave\n"
        u"skrive over filer som finnes",
        std::nullopt,
        [](Options &options, QLatin1StringView, const QStringList &) { options.erstatt = true; }},
    Option{"--version"_L1,
           {},
           u"vis versjonen, som menyen viser siste del av",
           std::nullopt,
           takeTelling<Task::Version>},
    Option{"--help"_L1,
           {},
           u"vis denne teksten; -h gjør det samme",
           std::nullopt,
           takeTelling<Task::Help>},
};

/// The arguments, read from the first to the last.
class Arguments
{
public:
    explicit Arguments(const QStringList &arguments) : m_arguments(arguments) {}

    [[nodiscard]] bool atEnd() const { return m_next == m_arguments.size(); }

    /// The option that stands next; its first value may stand behind "=".
    const Option &takeOption()
    {
        const QString argument = m_arguments[m_next] == "-h"_L1 ? u"--help"_s : m_arguments[m_next];
        ++m_next;
        const qsizetype equals = argument.indexOf(u'=');
        m_hasValue = argument.startsWith("--"_L1) && equals > 0;
        const QString name = m_hasValue ? argument.left(equals) : argument;
        m_value = m_hasValue ? argument.mid(equals + 1) : QString();

        const auto *option = std::find_if(kOptions.begin(), kOptions.end(),
                                          [&](const auto &o) { return o.name == name; });
        if (option == kOptions.end())
            usage(u"ukjent valg %1"_s.arg(withoutSecrets(name)));
        if (m_given.contains(name))
            usage(u"valget %1 er gitt to ganger"_s.arg(name));
        m_given.insert(name);
        return *option;
    }

    /// As many values as it has.
    QStringList takeValues(const Option &option)
    {
        QStringList values;
        if (option.values.isEmpty()) {
            if (m_hasValue)
                usage(u"valget %1 tar ingen verdi"_s.arg(option.name));
            return values;
        }
        const QStringList names = option.values.toString().split(u' ');
        for (qsizetype i = 0; i < names.size(); ++i) {
            const bool isJoined = i == 0 && m_hasValue;
            if (!isJoined && atEnd())
                usageOfMissing(option, names.sliced(i));
            values += isJoined ? m_value : m_arguments[m_next++];
            if (values.last().isEmpty() && i > 0)
                usageOfMissing(option, names.sliced(i));
            if (values.last().isEmpty())
                usage(u"valget %1 har en tom verdi"_s.arg(option.name));
        }
        return values;
    }

    [[nodiscard]] bool has(QLatin1StringView option) const { return m_given.contains(option); }

private:
    [[noreturn]] static void usageOfMissing(const Option &option, const QStringList &names)
    {
        usage(u"valget %1 mangler verdien %2"_s.arg(option.name, names.join(u' ')));
    }

    const QStringList &m_arguments;
    qsizetype m_next = 0;
    QSet<QString> m_given;
    bool m_hasValue = false; // of the option taken last
    QString m_value;
};

/// "a, b og c", of two or more.
QString listed(QStringList names)
{
    const QString last = names.takeLast();
    return names.join(u", "_s) + u" og "_s + last;
}

[[noreturn]] void refuseSecondTask()
{
    QStringList tasks;
    for (const Option &option : kOptions) {
        if (option.task)
            tasks += option.name;
    }
    usage(u"bare ett av valgene %1 kan gis"_s.arg(listed(std::move(tasks))));
}

QString nameOf(Task task)
{
    const auto *option = std::find_if(kOptions.begin(), kOptions.end(),
                                      [&](const Option &o) { return o.task == task; });
    return option == kOptions.end() ? u"kall uten oppgave"_s : QString(option->name);
}

bool isOneOf(Task task, std::initializer_list<Task> tasks)
{
    return std::find(tasks.begin(), tasks.end(), task) != tasks.end();
}

/// Refuses an option that stands beside a task other than those it is for.
void refuseBeside(Task task, const Arguments &given, QLatin1StringView option,
                  std::initializer_list<Task> tasks)
{
    if (!given.has(option) || isOneOf(task, tasks))
        return;
    QStringList names;
    std::transform(tasks.begin(), tasks.end(), std::back_inserter(names), nameOf);
    usage(u"%1 gjelder bare %2"_s.arg(option, listed(std::move(names))));
}

/// What does not go together.
void refuseMisfits(const Options &options, const Arguments &given)
{
    using enum Options::Task;
    if (options.task == Copy && given.has("--dsn"_L1))
        usage(u"--kopier navngir selv databasene, uten --dsn"_s);
    if (options.task == Screens && given.has("--dsn"_L1))
        usage(u"--tur har sin egen database, uten --dsn"_s);
    if (isOneOf(options.task, {Ehf, Ehf3, Pdf}) && !given.has("--ut"_L1))
        usage(u"%1 og --ut må gis sammen"_s.arg(nameOf(options.task)));
    refuseBeside(options.task, given, "--ut"_L1, {Ehf, Ehf3, Pdf});
    refuseBeside(options.task, given, "--erstatt"_L1, {Ehf, Ehf3, AllEhf3, Pdf, AllPdf, Tour});
    for (const QLatin1StringView limit : {"--fra"_L1, "--til"_L1, "--status"_L1})
        refuseBeside(options.task, given, limit, {AllPdf, AllEhf3});
    if (options.fraDato.isValid() && options.tilDato.isValid() && options.fraDato > options.tilDato)
        usage(u"--fra er senere enn --til"_s);
}

} // namespace

Options parseOptions(const QStringList &arguments, int thisYear)
{
    Options options;
    options.aar = qint16(thisYear);
    bool hasTask = false;
    Arguments given(arguments);
    while (!given.atEnd()) {
        const Option &option = given.takeOption();
        const QStringList values = given.takeValues(option);
        if (option.task) {
            if (std::exchange(hasTask, true))
                refuseSecondTask();
            options.task = *option.task;
        }
        option.take(options, option.name, values);
        if (options.task == Task::Help || options.task == Task::Version)
            return options;
    }

    if (!hasTask && given.has("--dsn"_L1))
        options.task = Task::Start;
    refuseMisfits(options, given);
    if (options.dsn.isEmpty())
        options.dsn = kDefaultDsn;
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
    for (const Option &option : kOptions) {
        QString head = u"  "_s + option.name;
        if (!option.values.isEmpty())
            head += u' ' + option.values.toString();
        text += head.leftJustified(kIndent);
        text += option.help.toString().replace(u'\n', u'\n' + QString(kIndent, u' '));
        text += u'\n';
    }
    text += u"\nStatus: 0 når alt gikk bra, 1 når noe ikke lot seg gjøre, 2 når valgene ikke gir "
            u"mening,\n3 når ingen skjerm svarer der vinduer skal vises, 130 når Ctrl+C avbrøt "
            u"--kopier, --kontroll,\n--ehf3-alle eller --pdf-alle (143 ved SIGTERM).\n"_s;
    return text;
}
