#include "submit/attachmentfile.h"

AttachmentFile::AttachmentFile(const QString &path, QObject *parent)
    : QFile(path, parent)
{
}

bool AttachmentFile::openForSending()
{
    if (!open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    sizeAtOpen = QFile::size();
    return true;
}

qint64 AttachmentFile::size() const
{
    return isOpen() ? sizeAtOpen : QFile::size();
}
