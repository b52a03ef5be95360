#ifndef VELK_CLI_COMMANDS_COMPONENTSBYNAME_H
#define VELK_CLI_COMMANDS_COMPONENTSBYNAME_H

#include <velk/switching/SwitchingModel.h>

#include <QHash>

namespace VelkCli {

/// Finds components by reference, which may lack the number of the netlist, where there are as many to find as there
/// are components.
class ComponentsByName
{
public:
    /// The model has to stay.
    explicit ComponentsByName(const Velk::SwitchingModel &switchingModel);

    /// The component's number in the model, or none where no component has the reference or several netlists have it.
    int componentOf(const QString &ref) const;

private:
    const Velk::SwitchingModel &model;
    QHash<QString, int> drawnSo; ///< by references without the number of the netlist; none for several
};
}

#endif
