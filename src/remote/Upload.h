#pragma once
// A model file on its way in: announced, written block by block, finished. One at a time; an unfinished one
// waits for ever, also over the end of its connection.

#include <QFile>
#include <QString>

/// Link thread.
class Upload
{
public:
    /// Gives up an unfinished one, its part of a file staying, and opens "model/" + `name`, overwriting a
    /// file of that name. False when it cannot be opened or would not lie below "model/".
    bool open(const QString &name, quint64 size);
    /// Dropped when nothing is open. A failed write shows in the size at the end.
    void write(const char *bytes, qint64 size);
    /// True when the file has the announced size; it is then in the queue. Otherwise it is deleted. Nothing
    /// happens when nothing is open.
    bool finish();

private:
    QString m_fileName;
    quint64 m_fileSize = 0;
    QFile m_file;
};
