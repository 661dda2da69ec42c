#include "QCliApplication.h"
#include "QCliConfigCommand.h"

void registerCliCommands(QCliApplication& application)
{
    application.add(std::make_unique<QCliConfigCommand>());
}
