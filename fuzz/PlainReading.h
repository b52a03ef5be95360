#ifndef VELK_FUZZ_PLAINREADING_H
#define VELK_FUZZ_PLAINREADING_H

#include <velk/model/EDAComponent.h>
#include <velk/model/EDANet.h>
#include <velk/model/EDAPart.h>

#include <QEnableSharedFromThis>
#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>

class QIODevice;

namespace PlainReading {

/// What readers are compared with: what Velk does, written down in the most obvious way. A token is found by matching
/// the path with a regular expression at every query.
class PlainToken : public QEnableSharedFromThis<PlainToken>
{
public:
    QString name;
    QString value;
    QList<QSharedPointer<PlainToken>> children;

    QSharedPointer<PlainToken> find(const QString &path);

private:
    QSharedPointer<PlainToken> findChild(const QString &childName, const QString &childValue) const;
};

/// Line by line and character by character. The root, or null for wrong input.
QSharedPointer<PlainToken> readPlainly(QIODevice &device);

/// The model of one netlist. Throws std::runtime_error where an element is missing.
struct PlainNetlist
{
    explicit PlainNetlist(const QSharedPointer<PlainToken> &root);

    QMap<QString, QSharedPointer<Velk::EDAPart>> parts;
    QMap<QString, QSharedPointer<Velk::EDAComponent>> components;
    QMap<QString, QSharedPointer<Velk::EDANet>> nets;

private:
    void parseParts(const QSharedPointer<PlainToken> &root);
    void parseComponents(const QSharedPointer<PlainToken> &root);
    void parseNets(const QSharedPointer<PlainToken> &root);
    void parseNode(const QSharedPointer<PlainToken> &token, const QSharedPointer<Velk::EDANet> &net);
};
}

#endif
