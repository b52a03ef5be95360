#include <velk/model/ElementOwner.h>

namespace Velk {

ElementOwner::ElementOwner() = default;
ElementOwner::~ElementOwner() = default;
ElementOwner::ElementOwner(const ElementOwner &other) = default;
ElementOwner &ElementOwner::operator=(const ElementOwner &other) = default;
}
