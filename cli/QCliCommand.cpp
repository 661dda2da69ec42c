#include "QCliCommand.h"

QCliCommand::~QCliCommand() = default;
