#ifndef VELK_INI_EDAPHYSICALINIGENERATOR_H
#define VELK_INI_EDAPHYSICALINIGENERATOR_H

#include <velk/VelkExport.h>
#include <velk/model/EDAProvider.h>

#include <QList>
#include <QSharedDataPointer>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

class QIODevice;

namespace Velk {

class EDAPhysicalIniGeneratorPrivate;

/// Writes the physical INI file of the test system's resource manager: a section for each device, with all
/// properties of the component that stands for it.
///
///     [device->U1]
///     CompType=Source
///     Dev=SMU
///     DevNo=1
class VELK_EXPORT EDAPhysicalIniGenerator
{
public:
    static QString DEFAULT_SOURCE_COMPONENT_TYPE; ///< "Source"; read when a generator is constructed

    /// \a netlist stays the caller's and must outlive every generate().
    explicit EDAPhysicalIniGenerator(EDAProvider *netlist);
    ~EDAPhysicalIniGenerator();
    EDAPhysicalIniGenerator(const EDAPhysicalIniGenerator &other);
    EDAPhysicalIniGenerator &operator=(const EDAPhysicalIniGenerator &other);
    EDAPhysicalIniGenerator(EDAPhysicalIniGenerator &&other) noexcept;
    EDAPhysicalIniGenerator &operator=(EDAPhysicalIniGenerator &&other) noexcept;

    /// Replaces the list of component types that are devices, one entry, DEFAULT_SOURCE_COMPONENT_TYPE, at
    /// first. Types are compared without regard to case; an empty list makes an empty file.
    void setComponentTypesThatAreExported(const QList<QString> &types);

    /// The components of these types, in the provider's order.
    QList<QSharedPointer<EDAComponent>> devices() const;

    /// Writes the whole file. Sections come in the provider's order of components and are named by their
    /// references as the provider gives them; keys are in ascending order, upper case before lower case. A null
    /// component is passed over. The device is opened and closed unless it is open already, also when the provider
    /// throws. Failures of the device are not reported: ask it.
    void generate(QIODevice *device) const;

    /// What readers would not take as it is meant in the file that generate() writes, as
    /// EDAApplicationIniGenerator::warnings() tells it of the other file.
    QStringList warnings() const;

private:
    template <typename Writer>
    VELK_NO_EXPORT void writeTo(Writer &writer) const;

    QSharedDataPointer<EDAPhysicalIniGeneratorPrivate> d;
};
}

#endif
