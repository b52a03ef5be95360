#ifndef VELK_TESTS_PIPE_H
#define VELK_TESTS_PIPE_H

#include <QByteArray>
#include <QIODevice>

#include <algorithm>

/// A pipe that brings a few bytes at a time, or a device that claims to hold a lot and fails when it is read.
class Pipe : public QIODevice
{
public:
    explicit Pipe(const QByteArray &bytes, qint64 claimedSize = 0)
        : rest(bytes)
        , claimed(claimedSize)
    {
    }
    bool isSequential() const override { return claimed == 0; }
    qint64 size() const override { return claimed; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        if (rest.isEmpty())
            return -1;
        const qint64 count = qMin(qMin(maxSize, qint64(3)), qint64(rest.size()));
        std::copy_n(rest.constData(), count, data);
        rest.remove(0, count);
        return count;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray rest;
    qint64 claimed;
};

#endif
