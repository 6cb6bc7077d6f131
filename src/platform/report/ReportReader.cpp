#include "platform/report/ReportReader.h"

#include "platform/report/XmlSource.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace report {

namespace {

constexpr int kVersion = 1;
constexpr int kMaxIncludes = 8;    // files open within one another
constexpr int kMostIncludes = 100; // in all; each may hold others many times over
constexpr size_t kMostFormulas = 1000;
constexpr double kSmallestType = 1;
constexpr double kLargestType = 200; // points

class Reader
{
public:
    Reader(const QString &path, const std::function<QByteArray(const QString &)> &include)
        : m_include(include)
    {
        m_report.path = path;
    }

    ReportFile read(const QByteArray &bytes)
    {
        open(bytes, m_report.path, u"report");
        Attributes attributes(source());
        m_report.title = attributes.text(u"title");
        m_report.fileName = attributes.formula(u"fileName");
        m_report.author = attributes.formula(u"author");
        checkVersion(attributes);
        const Place place = source().place();
        children([this](const QString &name) { return reportChild(name); });
        source().expectEnd();
        if (!m_report.query)
            raiseInFile(place, u"<report> mangler <query>"_s);
        const QSizeF body = m_report.paper.shrunkBy(m_report.margins);
        if (body.width() <= 0 || body.height() <= 0)
            raiseInFile(place, u"margene er større enn papiret"_s);
        if (m_report.styles.empty())
            m_report.styles.push_back(styled(u"normal"_s, u"Liberation Sans"_s, 9));
        return std::move(m_report);
    }

private:
    XmlSource &source() { return *m_sources.back(); }

    void open(const QByteArray &bytes, const QString &file, QStringView root)
    {
        m_sources.push_back(std::make_unique<XmlSource>(bytes, file));
        if (!source().nextChild() || source().name() != root)
            raiseInFile(source().place(), u"filen begynner ikke med <%1>"_s.arg(root));
    }

    static void checkVersion(Attributes &attributes)
    {
        if (attributes.required(u"version") != QString::number(kVersion))
            raiseInFile(attributes.place(), u"filen er ikke av versjon %1"_s.arg(kVersion));
        attributes.finish();
    }

    /// Hands each child's name to `child`, which reads the child to its end, or returns false when
    /// it does not belong there. The children of an included file stand in the place of the
    /// include.
    template<class Child>
    void children(const Child &child)
    {
        const QString parent = source().name();
        while (source().nextChild()) {
            const QString name = source().name();
            if (name == u"include")
                included(child);
            else if (!child(name))
                raiseInFile(source().place(), u"<%1> hører ikke hjemme i <%2>"_s.arg(name, parent));
        }
    }

    template<class Child>
    void included(const Child &child)
    {
        Attributes attributes(source());
        const QString file = attributes.required(u"file");
        attributes.finish();
        if (file.contains(u'/') || file.contains(u'\\') || file.contains(QChar(u'\0')))
            raiseInFile(attributes.place(), u"en fil tas inn med sitt navn alene"_s);
        if (m_sources.size() >= kMaxIncludes || ++m_includes > kMostIncludes)
            raiseInFile(attributes.place(), u"for mange filer tar inn hverandre"_s);
        source().expectEmpty();
        QByteArray bytes;
        try {
            bytes = m_include(file);
        } catch (const RunTimeError &error) {
            raiseInFile(attributes.place(), error.description());
        }
        open(bytes, file, u"part");
        Attributes part(source());
        checkVersion(part);
        children(child);
        source().expectEnd();
        m_sources.pop_back();
    }

    bool reportChild(const QString &name)
    {
        if (name == u"page")
            readPage();
        else if (name == u"query")
            readQuery();
        else if (name == u"formula")
            readNamedFormula();
        else if (name == u"style")
            readStyle();
        else if (name == u"group")
            readGroup();
        else if (std::vector<Band> *bands = bandsOfReport(name))
            bands->push_back(readBand(name == u"pageHeader" || name == u"pageFooter"));
        else
            return false;
        return true;
    }

    std::vector<Band> *bandsOfReport(QStringView name)
    {
        if (name == u"reportHeader")
            return &m_report.reportHeaders;
        if (name == u"pageHeader")
            return &m_report.pageHeaders;
        if (name == u"detail")
            return &m_report.details;
        if (name == u"pageFooter")
            return &m_report.pageFooters;
        return name == u"reportFooter" ? &m_report.reportFooters : nullptr;
    }

    void readPage()
    {
        Attributes attributes(source());
        m_report.paper = {attributes.length(u"width", 210), attributes.length(u"height", 297)};
        m_report.margins = {attributes.length(u"left", 15), attributes.length(u"top", 15),
                            attributes.length(u"right", 15), attributes.length(u"bottom", 15)};
        attributes.finish();
        source().expectEmpty();
    }

    void readQuery()
    {
        Attributes attributes(source());
        attributes.finish();
        if (m_report.query)
            raiseInFile(attributes.place(), u"rapporten har to spørringer"_s);
        const QString statement = source().takeText();
        try {
            m_report.query.emplace(statement);
        } catch (const RunTimeError &error) {
            raiseInFile(attributes.place(), u"spørringen: "_s + error.description());
        }
    }

    void readNamedFormula()
    {
        Attributes attributes(source());
        DeclaredFormula formula;
        formula.name = attributes.required(u"name");
        attributes.finish();
        for (const DeclaredFormula &other : m_report.formulas) {
            if (other.name.compare(formula.name, Qt::CaseInsensitive) == 0)
                raiseInFile(attributes.place(),
                            u"formelen «%1» finnes fra før"_s.arg(formula.name));
        }
        if (m_report.formulas.size() == kMostFormulas)
            raiseInFile(attributes.place(), u"rapporten har for mange formler"_s);
        const QString text = source().takeText();
        formula.text = readFormula(text, attributes.place(), u"@"_s + formula.name);
        m_report.formulas.push_back(std::move(formula));
    }

    static TextStyle styled(const QString &name, const QString &family, double size)
    {
        TextStyle style;
        style.name = name;
        style.font.setFamily(family);
        style.font.setPointSizeF(size);
        return style;
    }

    void readStyle()
    {
        Attributes attributes(source());
        const QString name = attributes.required(u"name");
        if (findStyle(name) >= 0)
            raiseInFile(attributes.place(), u"stilen «%1» finnes fra før"_s.arg(name));
        TextStyle style = styled(name, u"Liberation Sans"_s, 9);
        if (attributes.has(u"base"))
            style = m_report.styles[size_t(styleOf(attributes, u"base"))];
        style.name = name;
        QFont &font = style.font;
        font.setFamily(attributes.text(u"font", font.family()));
        font.setPointSizeF(
            attributes.number(u"size", font.pointSizeF(), kSmallestType, kLargestType));
        font.setBold(attributes.flag(u"bold", font.bold()));
        font.setItalic(attributes.flag(u"italic", font.italic()));
        font.setUnderline(attributes.flag(u"underline", font.underline()));
        style.color = attributes.color(u"color", style.color);
        attributes.finish();
        source().expectEmpty();
        m_report.styles.push_back(std::move(style));
    }

    [[nodiscard]] int findStyle(const QString &name) const
    {
        for (size_t i = 0; i < m_report.styles.size(); ++i) {
            if (m_report.styles[i].name == name)
                return int(i);
        }
        return -1;
    }

    int styleOf(Attributes &attributes, QStringView attribute)
    {
        const QString name = attributes.text(attribute);
        if (!attributes.has(attribute))
            return 0;
        const int style = findStyle(name);
        if (style < 0)
            raiseInFile(attributes.place(), u"stilen «%1» finnes ikke"_s.arg(name));
        return style;
    }

    void readGroup()
    {
        Attributes attributes(source());
        Group group;
        group.name = attributes.required(u"name");
        static_cast<void>(attributes.required(u"on"));
        group.on = attributes.formula(u"on");
        group.keepTogether = attributes.flag(u"keepTogether");
        group.repeatHeader = attributes.flag(u"repeatHeader");
        group.newPage = attributes.flag(u"newPage");
        attributes.finish();
        for (const Group &other : m_report.groups) {
            if (other.name.compare(group.name, Qt::CaseInsensitive) == 0)
                raiseInFile(attributes.place(), u"gruppen «%1» finnes fra før"_s.arg(group.name));
        }
        children([&](const QString &name) {
            std::vector<Band> *bands = bandsOfGroup(group, name);
            if (bands)
                bands->push_back(readBand(false));
            return bands != nullptr;
        });
        m_report.groups.push_back(std::move(group));
    }

    static std::vector<Band> *bandsOfGroup(Group &group, QStringView name)
    {
        if (name == u"header")
            return &group.headers;
        if (name == u"footer")
            return &group.footers;
        if (name == u"carryHeader")
            return &group.carryHeaders;
        return name == u"carryFooter" ? &group.carryFooters : nullptr;
    }

    Band readBand(bool ofPage)
    {
        Attributes attributes(source());
        // Its room is kept before it is filled.
        const bool fixed = source().name() == u"pageFooter" || source().name() == u"carryFooter";
        Band band;
        band.height = attributes.requiredLength(u"height");
        band.visible = attributes.formula(u"visible");
        if (ofPage)
            band.pages = static_cast<Pages>(
                attributes.choice(u"on", {u"all", u"first", u"notFirst", u"last", u"notLast"}));
        else
            band.each = attributes.formula(u"each");
        if (source().name() == u"pageHeader" && band.pages >= Pages::Last)
            raiseInFile(attributes.place(),
                        u"et sidehode vet ikke hvilken side som er den siste"_s);
        attributes.finish();
        children([&](const QString &name) {
            if (name == u"text")
                band.items.push_back(readText());
            else if (name == u"line")
                band.items.push_back(readLine());
            else if (name == u"box")
                band.items.push_back(readBox());
            else if (name == u"picture")
                band.items.push_back(readPicture());
            else
                return false;
            if (fixed && band.items.back().grow)
                raiseInFile(source().place(), u"denne delen av siden kan ikke vokse"_s);
            return true;
        });
        return band;
    }

    static void readRect(Item &item, Attributes &attributes)
    {
        item.rect =
            QRectF(attributes.requiredLength(u"x"), attributes.requiredLength(u"y"),
                   attributes.requiredLength(u"width"), attributes.requiredLength(u"height"));
        item.visible = attributes.formula(u"visible");
    }

    static void readAlignment(Item &item, Attributes &attributes)
    {
        constexpr Qt::Alignment kAcross[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
        constexpr Qt::Alignment kDown[] = {Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
        item.alignment = kAcross[attributes.choice(u"align", {u"left", u"center", u"right"})] |
                         kDown[attributes.choice(u"valign", {u"top", u"middle", u"bottom"})];
    }

    Item readText()
    {
        Attributes attributes(source());
        Item item;
        item.kind = ItemKind::Text;
        readRect(item, attributes);
        readAlignment(item, attributes);
        item.style = styleOf(attributes, u"style");
        item.value = attributes.formula(u"value");
        item.format = attributes.text(u"format");
        item.grow = attributes.flag(u"grow");
        item.wrap = attributes.flag(u"wrap", item.grow);
        attributes.finish();
        item.text = source().takeText();
        if (item.value && !item.text.isEmpty())
            raiseInFile(attributes.place(), u"<text> har både «value» og en tekst"_s);
        return item;
    }

    static void readStroke(Item &item, Attributes &attributes, double width)
    {
        item.width = attributes.number(u"line", width, 0, 20);
        item.color = attributes.color(u"color", item.color);
        item.stretch = attributes.flag(u"stretch");
    }

    Item readLine()
    {
        Attributes attributes(source());
        Item item;
        item.kind = ItemKind::Line;
        const QPointF from(attributes.requiredLength(u"x"), attributes.requiredLength(u"y"));
        const QPointF to(attributes.length(u"x2", from.x()), attributes.length(u"y2", from.y()));
        item.rect = QRectF(from, QSizeF(to.x() - from.x(), to.y() - from.y()));
        item.visible = attributes.formula(u"visible");
        readStroke(item, attributes, 0.2);
        item.dashed = attributes.flag(u"dashed");
        attributes.finish();
        source().expectEmpty();
        return item;
    }

    Item readBox()
    {
        Attributes attributes(source());
        Item item;
        item.kind = ItemKind::Box;
        readRect(item, attributes);
        readStroke(item, attributes, 0);
        item.fill = attributes.color(u"fill", 0);
        item.radius = attributes.length(u"radius");
        attributes.finish();
        source().expectEmpty();
        return item;
    }

    Item readPicture()
    {
        Attributes attributes(source());
        Item item;
        item.kind = ItemKind::Picture;
        readRect(item, attributes);
        readAlignment(item, attributes);
        item.value = attributes.formula(u"value");
        item.file = attributes.text(u"file");
        if (bool(item.value) == !item.file.isEmpty())
            raiseInFile(attributes.place(), u"<picture> har enten «value» eller «file»"_s);
        if (item.file.contains(u'/') || item.file.contains(u'\\'))
            raiseInFile(attributes.place(), u"et bilde tas inn med sitt navn alene"_s);
        attributes.finish();
        source().expectEmpty();
        return item;
    }

    const std::function<QByteArray(const QString &)> &m_include;
    std::vector<std::unique_ptr<XmlSource>> m_sources; // the one being read is the last
    int m_includes = 0;
    ReportFile m_report;
};

} // namespace

ReportFile readReport(const QByteArray &bytes, const QString &path,
                      const std::function<QByteArray(const QString &name)> &include)
{
    return Reader(path, include).read(bytes);
}

} // namespace report
