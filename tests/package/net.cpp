#include <velk/model/EDANet.h>

#include <cstdio>

// Without optimisation nothing is inlined, so the library has to export what a class inherits from a template.
int main()
{
    const auto net = Velk::EDANet::create(QStringLiteral("N"));
    std::puts(qPrintable(net->sharedFromThis()->name));
    return 0;
}
