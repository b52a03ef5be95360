#ifndef VELK_TESTS_PAGEDATA_H
#define VELK_TESTS_PAGEDATA_H

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

/// What the scripts of a page show.
inline QJsonObject dataOf(const QByteArray &page)
{
    const QByteArray begin = "<script id=\"data\" type=\"application/json\">";
    const qsizetype from = page.indexOf(begin) + begin.size();
    return QJsonDocument::fromJson(page.mid(from, page.indexOf('<', from) - from)).object();
}

#endif
