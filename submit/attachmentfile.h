#pragma once

// An attachment's file as the body of a multipart part. The multipart device asks its
// parts for their size on every read it serves, which for a plain QFile is a stat of
// the file each time; while a large file is sent that is two system calls per 16 KiB.
// The size is taken once, at open, which is also the size the request announced in its
// Content-Length. Unbuffered: the network layer reads in chunks of its own, so
// QIODevice's buffer would only add a copy of every byte.
#include <QFile>

class AttachmentFile : public QFile
{
public:
    explicit AttachmentFile(const QString &path, QObject *parent = nullptr);

    // Opens for reading and notes the size; false when the file cannot be read.
    bool openForSending();

    qint64 size() const override;

private:
    qint64 sizeAtOpen = 0;
};
