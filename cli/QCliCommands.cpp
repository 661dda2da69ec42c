#include "QCliAirCommand.h"
#include "QCliApplication.h"
#include "QCliCheckCommand.h"
#include "QCliConfigCommand.h"
#include "QCliDefCommand.h"
#include "QCliFntCommand.h"
#include "QCliInfoCommand.h"
#include "QCliLintCommand.h"
#include "QCliPalCommand.h"
#include "QCliProjectCommand.h"
#include "QCliResaveCommand.h"
#include "QCliSffCommand.h"
#include "QCliSndCommand.h"

void registerCliCommands(QCliApplication& application)
{
    application.add(std::make_unique<QCliConfigCommand>());
    application.add(std::make_unique<QCliInfoCommand>());
    application.add(std::make_unique<QCliCheckCommand>());
    application.add(std::make_unique<QCliProjectCommand>());
    application.add(std::make_unique<QCliPalCommand>());
    application.add(std::make_unique<QCliAirCommand>());
    application.add(std::make_unique<QCliSffCommand>());
    application.add(std::make_unique<QCliSndCommand>());
    application.add(std::make_unique<QCliResaveCommand>());
    application.add(std::make_unique<QCliDefCommand>());
    application.add(std::make_unique<QCliLintCommand>());
    application.add(std::make_unique<QCliFntCommand>());
}
