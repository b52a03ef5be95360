#ifndef VELK_CLI_FORMATS_HTML_PAGE_H
#define VELK_CLI_FORMATS_HTML_PAGE_H

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>

namespace VelkCli {

/// The files of which a page is made, by their names in this folder.
struct PageFiles
{
    QString frame;       ///< the HTML, with the places of the parts as "@style@"
    QStringList styles;  ///< one behind the other
    QStringList scripts; ///< likewise
};

/// As JSON that can stand in an element of a page: it holds no "<", so that nothing in it ends the element.
QByteArray toPageData(const QJsonObject &members);

/// A page that needs nothing but a browser, with \a data in the script element with the id "data". Its security policy
/// names style and script by their hashes, so that the browser runs nothing else, whatever a netlist holds.
QByteArray pageOf(const PageFiles &files, const QByteArray &data);
}

#endif
