// Times one drag step of the enhanced capture overlay on a 3840 x 2160 screen: the
// mouse move is handled and the overlay repainted (and, on X, flushed to the
// server). Prints "<scenario> <median us> <p90 us> <steps> <band paints per step>".
#include "attachments/rubberbandenhanced.h"
#include "attachments/screenshot.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

const QRect kScreen(0, 0, 3840, 2160);
const int kSteps = 300;

void send(QWidget *overlay, QEvent::Type type, const QPoint &pos, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, pos, overlay->mapToGlobal(pos), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(overlay, &event);
}

QPixmap background()
{
    // On X the real screen is grabbed; elsewhere a busy picture of the same size.
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        return QGuiApplication::primaryScreen()->grabWindow(0, 0, 0, -1, -1);
    QImage image(kScreen.size(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        QRgb *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            line[x] = qRgb(x & 0xff, y & 0xff, (x ^ y) & 0xff);
    }
    return QPixmap::fromImage(image);
}

// Counts the band's paint events, so that a step that painted nothing shows.
class PaintCounter : public QObject
{
public:
    int paints = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return QObject::eventFilter(watched, event);
    }
};

PaintCounter paintCounter;

void report(const char *scenario, std::vector<qint64> nanoseconds)
{
    std::sort(nanoseconds.begin(), nanoseconds.end());
    const qint64 median = nanoseconds[nanoseconds.size() / 2];
    const qint64 p90 = nanoseconds[nanoseconds.size() * 9 / 10];
    std::printf("%s %.1f %.1f %zu %.2f\n", scenario, median / 1000.0, p90 / 1000.0, nanoseconds.size(),
                double(paintCounter.paints) / double(nanoseconds.size()));
    paintCounter.paints = 0;
}

// Drags from `grab` along a circle, one step per move, timing move + repaint.
std::vector<qint64> dragSteps(ScreenShot &overlay, const QPoint &grab)
{
    send(&overlay, QEvent::MouseButtonPress, grab, Qt::LeftButton, Qt::LeftButton);
    QApplication::processEvents();
    paintCounter.paints = 0;
    std::vector<qint64> times;
    QElapsedTimer timer;
    for (int step = 0; step < kSteps; ++step) {
        const QPoint to = grab + QPoint((step % 40) * 7 - 140, (step % 25) * 5 - 60);
        timer.start();
        send(&overlay, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
        QApplication::processEvents();
        times.push_back(timer.nsecsElapsed());
    }
    send(&overlay, QEvent::MouseButtonRelease, grab, Qt::LeftButton, Qt::NoButton);
    return times;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    ScreenShot overlay(true);
    overlay.setBackground(background());
    overlay.setScreenGeometry(kScreen);
    overlay.setMouseTracking(true);
    overlay.show();
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents();

    // A 600 x 400 selection, painted once so that its zones are laid out.
    const QRect selection(1600, 900, 600, 400);
    send(&overlay, QEvent::MouseButtonPress, selection.topLeft(), Qt::LeftButton, Qt::LeftButton);
    send(&overlay, QEvent::MouseMove, selection.bottomRight(), Qt::NoButton, Qt::LeftButton);
    send(&overlay, QEvent::MouseButtonRelease, selection.bottomRight(), Qt::LeftButton, Qt::NoButton);
    overlay.rubberBand()->repaint();
    QApplication::processEvents();
    auto *band = static_cast<RubberBandEnhanced *>(overlay.rubberBand());
    band->installEventFilter(&paintCounter);
    const QPoint label = band->zoneRect(8).center() + overlay.rubberBand()->pos();
    report("move-label", dragSteps(overlay, label));

    const QPoint corner = band->zoneRect(4).center() + overlay.rubberBand()->pos();
    report("resize-corner", dragSteps(overlay, corner));

    QApplication::processEvents();
    paintCounter.paints = 0;
    std::vector<qint64> full;
    QElapsedTimer timer;
    for (int i = 0; i < 50; ++i) {
        timer.start();
        overlay.repaint();
        full.push_back(timer.nsecsElapsed());
    }
    report("full-repaint", full);
    return 0;
}
