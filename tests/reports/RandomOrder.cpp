#include "reports/RandomOrder.h"

using namespace Qt::StringLiterals;

namespace {

const QStringList kWords{u"Kjøring"_s,        u"Semitrailer"_s, u"og"_s,    u"fra"_s,
                         u"Gjøvik"_s,         u"ventetid"_s,    u"timer"_s, u"WWW"_s,
                         u"Ålesund"_s,        u"uke"_s,         u"grus"_s,  u"8-16"_s,
                         u"maskinflytting"_s, u"ærend"_s,       u"m³"_s,    u"Øvre"_s};

/// All letters of the code page but the blank and the apostrophe.
QString letters()
{
    QString all = u"€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ"_s;
    for (char16_t letter = u'!'; letter <= u'ÿ'; ++letter) {
        if (letter != u'\'' && (letter < u'\x7f' || letter > u'\xa0'))
            all += letter;
    }
    return all;
}

/// Draws the parts of an order one after the other.
class OrderDice : public Dice
{
public:
    explicit OrderDice(quint32 start) : Dice(start) {}

    RandomOrder order()
    {
        RandomOrder order;
        order.form = oneOf(QStringList{u"Fak-mgiro-ulogo.rpt"_s, u"Fak-mgiro-mlogo.rpt"_s,
                                       u"Fak-ugiro-ulogo.rpt"_s, u"Fak-ugiro-mlogo.rpt"_s});
        order.original = hits(70);
        order.longSeller = hits(15);
        order.rounding = QString::number(number(0, 2));
        if (hits(50))
            order.note = text(hits(30) ? 255 : 60);
        order.head = head();
        m_sign = hits(25) ? -1 : 1;
        m_mixed = hits(25);
        m_rates = rates();
        const int count = hits(50) ? number(1, 12) : number(1, 120);
        order.lines.push_back(goods());
        while (static_cast<int>(order.lines.size()) < count)
            order.lines.push_back(hits(15) ? invoice::Line{{}, text(50), {}, {}, {}} : goods());
        return order;
    }

private:
    invoice::Head head()
    {
        const auto maybe = [&](int most) { return hits(70) ? text(most) : QString(); };
        invoice::Head head;
        head.customer = hits(30) ? number(100'000'000, 999'999'999) : number(1, 99'999);
        head.name = text(40);
        head.address1 = maybe(40);
        head.address2 = maybe(40);
        head.postcode = QString::number(number(1000, 9999));
        head.place = maybe(40);
        const bool own = hits(40); // place of delivery
        head.delivery1 = own ? text(40) : QString();
        head.delivery2 = own ? maybe(40) : QString();
        head.deliveryPostcode = own ? QString::number(number(1000, 9999)) : QString();
        head.deliveryPlace = own ? maybe(40) : QString();
        head.ourReference = maybe(20);
        head.theirReference = maybe(20);
        head.invoiced = QDate(2014, 1, 1).addDays(number(0, 364));
        head.days = number(0, 90);
        return head;
    }

    QStringList rates()
    {
        const QStringList all{u"25"_s,   u"25"_s,   u"25"_s, u"15"_s,   u"10"_s,  u"0"_s,
                              u"11.1"_s, u"12.5"_s, u"6"_s,  u"99.9"_s, u"0.5"_s, u"8"_s};
        QStringList chosen;
        for (int count = number(1, 6); count > 0; --count)
            chosen += oneOf(all);
        return chosen;
    }

    /// Most cost little and some very much, so that sums of all widths come up.
    invoice::Line goods()
    {
        const int price = hits(70)   ? number(1, 500'000)
                          : hits(80) ? number(1, 100)
                                     : number(1, 999'999'999);
        const int tenths = hits(60)             ? number(1, 40) * 10
                           : price < 10'000     ? number(1, 999'999)
                           : price < 50'000'000 ? number(1, 9'999)
                                                : number(1, 20);
        const int sign = m_mixed && hits(40) ? -m_sign : m_sign;
        const QString product = hits(60)   ? oneOf(productsWithUnits())
                                : hits(90) ? text(20)
                                           : QString();
        return {product, text(hits(50) ? 50 : 25), QString::number(sign * tenths / 10.0, 'f', 1),
                QString::number(price / 100.0, 'f', 2), oneOf(m_rates)};
    }

    int m_sign = 1;
    bool m_mixed = false; ///< lines of the other sign among them
    QStringList m_rates;
};

} // namespace

QString Dice::text(int most)
{
    static const QString all = letters();
    const int length = number(1, most);
    const int kind = number(1, 100);
    QString text;
    while (text.size() < length) {
        if (kind <= 60)
            text += oneOf(kWords) + u' ';
        else if (kind <= 70)
            text += u'W';
        else if (kind <= 85 && hits(15))
            text += u' ';
        else
            text += oneOf(all);
    }
    text = text.first(length).trimmed();
    return text.isEmpty() ? u"X"_s : text;
}

QStringList productsWithUnits()
{
    QStringList products;
    for (int i = 1; i <= 30; ++i)
        products += u"E%1"_s.arg(i);
    return products;
}

RandomOrder drawOrder(quint32 start)
{
    return OrderDice(start).order();
}
