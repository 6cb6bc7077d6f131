// Makes the pictures of the four invoice forms for the options screen: one invoice of the demo
// company on each form, as blankett-0.png to blankett-3.png in the folder that is named.

#include "platform/report/Painter.h"
#include "platform/report/Report.h"
#include "reports/DemoDatabase.h"
#include "runtime/RunTimeError.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kSize(504, 714); // three times the size on the screen
constexpr double kPixelsPerMm = 504.0 / 210;
constexpr int kOrder = 1038; // of the demo company: several lines, one page
const QColor kInk(0x22, 0x38, 0x4f);

/// A sign that is as large as a client's logo may be: a road to the horizon, and a name.
QByteArray logo()
{
    QImage picture(4 * 237, 4 * 76, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(4, 4);
    painter.fillRect(QRectF(0, 6, 64, 64), kInk);
    QPainterPath road;
    road.moveTo(8, 70);
    road.lineTo(28, 22);
    road.lineTo(36, 22);
    road.lineTo(56, 70);
    road.closeSubpath();
    painter.fillPath(road, Qt::white);
    painter.setPen(QPen(kInk, 2.5, Qt::DashLine));
    painter.drawLine(QPointF(32, 70), QPointF(32, 24));
    QFont font(u"Liberation Sans"_s);
    font.setBold(true);
    font.setPixelSize(34);
    painter.setFont(font);
    painter.setPen(kInk);
    painter.drawText(QRectF(74, 0, 163, 76), Qt::AlignVCenter, u"GRÅBEIN"_s);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    picture.save(&buffer, "PNG");
    return bytes;
}

QImage pictureOf(const report::Document &document)
{
    QImage picture(kSize, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    report::paintPage(painter, document, 0, kPixelsPerMm);
    return picture;
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    try {
        const QTemporaryDir scratch;
        QFile database(scratch.filePath(u"demo.db"_s));
        if (!database.open(QIODevice::WriteOnly))
            throw RunTimeError(errors::kInvalidCall, u"no database file"_s);
        const QString connectionString = u"dsn="_s + database.fileName();
        makeDemoDatabase(connectionString);
        storeDemoLogo(connectionString, logo());
        int number = 0;
        for (const char *form : {"Fak-mgiro-ulogo.rpt", "Fak-mgiro-mlogo.rpt",
                                 "Fak-ugiro-ulogo.rpt", "Fak-ugiro-mlogo.rpt"}) {
            const report::Document document =
                report::makeReport({QStringLiteral(REPORT_FOLDER "/") + QString::fromLatin1(form),
                                    connectionString,
                                    u"{Ordre.KlientNr}=1 and {Ordre.OrdreNr}=%1"_s.arg(kOrder),
                                    {}});
            const QString path = u"%1/blankett-%2.png"_s.arg(folder).arg(number++);
            if (!pictureOf(document).save(path))
                throw RunTimeError(errors::kInvalidCall, u"cannot write "_s + path);
        }
    } catch (const RunTimeError &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
