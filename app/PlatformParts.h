#pragma once

#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/DurableWrites.h"
#include "platform/EventLoop.h"
#include "platform/Files.h"
#include "platform/HttpServer.h"
#include "platform/Inet.h"
#include "platform/JournalFile.h"
#include "platform/MSComm.h"
#include "platform/MessageQueue.h"
#include "platform/MqttClient.h"
#include "platform/PrinterPort.h"
#include "platform/ServiceNotify.h"
#include "platform/SoundDevice.h"
#include "platform/Winsock.h"

namespace nordkeep {

/// What the program stands on, realised once in main.
struct PlatformParts {
    Clock& clock;
    EventLoop& loop;
    DurableWrites& disk;
    JournalFile& journal;
    SocketFactory& sockets;
    SerialFactory& serial;
    InetFactory& inet;
    MessageQueueFactory& queues;
    PrinterPort& printer;
    SoundDevice& sound;
    HttpServer& http;
    MqttClients& mqtt;
    ServiceNotify& serviceManager;
    Dialogs& dialogs;
    NativePath programFile{};
    bool hasScreen = false;
};

}  // namespace nordkeep
