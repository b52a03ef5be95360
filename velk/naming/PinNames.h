#ifndef VELK_NAMING_PINNAMES_H
#define VELK_NAMING_PINNAMES_H

#include <velk/VelkExport.h>
#include <velk/model/EDAProvider.h>

#include <QString>

#include <memory>

namespace Velk {

class PinNamesPrivate;

/// How people name the pins of a netlist: "U1#1.HI" by its name, or "U1#1.3" by its number where the name is empty or
/// could be taken for another pin of the component.
class VELK_EXPORT PinNames
{
public:
    /// Looks through the parts of \a netlist once. The netlist stays the caller's and must outlive all queries.
    explicit PinNames(const EDAProvider &netlist);
    ~PinNames();
    /// Copies share what was looked up.
    PinNames(const PinNames &other);
    PinNames &operator=(const PinNames &other);
    /// One that was moved from may be assigned to or destroyed, nothing else.
    PinNames(PinNames &&other) noexcept;
    PinNames &operator=(PinNames &&other) noexcept;

    /// Of the pin \a pinNumber of the component \a ref. By its number, too, where the netlist lists neither.
    QString text(const QString &ref, const QString &pinNumber) const;

private:
    std::shared_ptr<const PinNamesPrivate> d;
};
}

#endif
