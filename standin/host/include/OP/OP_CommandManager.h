#ifndef OP_COMMANDMANAGER_H
#define OP_COMMANDMANAGER_H

#include <CMD/CMD_Manager.h>

/// The command interpreter of the scene.
class OP_CommandManager : public CMD_Manager
{
};

#endif
