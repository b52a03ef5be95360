#include <velk/model/EDAProvider.h>

namespace Velk {

EDAProvider::~EDAProvider() = default;
EDAProvider::EDAProvider() = default;
EDAProvider::EDAProvider(const EDAProvider &other) = default;
EDAProvider &EDAProvider::operator=(const EDAProvider &other) = default;
}
