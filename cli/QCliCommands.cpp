#include "QCliApplication.h"
#include "QCliConfigCommand.h"
#include "QCliPalCommand.h"

void registerCliCommands(QCliApplication& application)
{
    application.add(std::make_unique<QCliConfigCommand>());
    application.add(std::make_unique<QCliPalCommand>());
}
