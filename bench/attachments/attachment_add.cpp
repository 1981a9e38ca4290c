// Times add_attachment_item for one picture file in the real MainWindow, preview
// included, and, for comparison, the same preview made from a full decode.
//
//   bench_attachment_add make FILE WIDTH HEIGHT   writes a JPEG camera-like picture
//   bench_attachment_add add FILE RUNS            prints the median ms of adding it
//   bench_attachment_add full FILE RUNS           prints the median ms of the preview
//                                                 made from a full decode
#include "form/mainwindow.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QImageReader>
#include <QTcpServer>
#include <QTreeWidget>
#include <QUuid>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

int makePicture(const QString &path, int width, int height)
{
    // Smooth gradients with fine texture, so the JPEG has the size of a real photograph.
    QImage image(width, height, QImage::Format_RGB32);
    quint32 noise = 12345;
    for (int y = 0; y < height; ++y) {
        QRgb *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            noise = noise * 1664525u + 1013904223u;
            const int n = int(noise >> 28) - 8;
            line[x] = qRgb(qBound(0, x * 255 / width + n, 255), qBound(0, y * 255 / height + n, 255),
                           qBound(0, ((x ^ y) & 0xFF) / 2 + 64 + n, 255));
        }
    }
    return image.save(path, "JPEG", 90) ? 0 : 1;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

// The preview as a full decode gives it: every pixel read, then fast scaling.
void fullDecodePreview(const QString &path, const QDir &folder)
{
    QImage image = QImageReader(path).read();
    if (image.width() > 512 || image.height() > 512)
        image = image.scaled(512, 512, Qt::KeepAspectRatio, Qt::FastTransformation);
    image.save(folder.filePath(QUuid::createUuid().toString() + ".png"));
}

int timeAdding(const QString &path, int runs)
{
    {
        // The window's single-instance guard would show a modal box if the port is taken.
        QTcpServer probe;
        if (!probe.listen(QHostAddress::Any, 23709)) {
            std::fprintf(stderr, "port 23709 is in use: a Feedback Agent is running\n");
            return 1;
        }
    }
    MainWindow window;
    QTreeWidget *tree = window.findChild<QTreeWidget *>(QStringLiteral("tree_Attachments"));
    std::vector<double> times;
    QElapsedTimer timer;
    for (int i = 0; i < runs; ++i) {
        timer.start();
        window.add_attachment_item(path, QPixmap());
        times.push_back(timer.nsecsElapsed() / 1e6);
        delete tree->takeTopLevelItem(0);
    }
    std::printf("%.1f\n", median(times));
    return 0;
}

int timeFullDecode(const QString &path, int runs)
{
    std::vector<double> times;
    QElapsedTimer timer;
    for (int i = 0; i < runs; ++i) {
        timer.start();
        fullDecodePreview(path, QDir::temp());
        times.push_back(timer.nsecsElapsed() / 1e6);
    }
    std::printf("%.1f\n", median(times));
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() == 5 && args[1] == "make")
        return makePicture(args[2], args[3].toInt(), args[4].toInt());
    if (args.size() == 4 && args[1] == "add")
        return timeAdding(args[2], args[3].toInt());
    if (args.size() == 4 && args[1] == "full")
        return timeFullDecode(args[2], args[3].toInt());
    std::fprintf(stderr, "usage: bench_attachment_add make FILE WIDTH HEIGHT | add FILE RUNS | full FILE RUNS\n");
    return 2;
}
