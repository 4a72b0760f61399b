// Everything of the platform that the application is built on, made by the program's entry point and passed
// down.
#pragma once

#include "platform/appkit/Application.h"
#include "platform/appkit/Dragging.h"
#include "platform/appkit/InterfaceLoader.h"
#include "platform/appkit/Workspace.h"
#include "platform/dotmac/DotMacKit.h"
#include "platform/dotmac/SecretStore.h"
#include "platform/foundation/Bundle.h"
#include "platform/foundation/Clock.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/foundation/ProcessInfo.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/URLLoading.h"
#include "platform/foundation/UserDefaultsController.h"
#include "platform/quicktime/AliasManager.h"
#include "platform/quicktime/Movie.h"
#include "platform/quicktime/SequenceGrabber.h"

namespace clipwave {

// All of it outlives the application's own objects.
struct ApplicationServices {
  Application& application;
  Clock& clock;
  RunLoop& runLoop;
  FileManager& files;
  ProcessInfo& process;
  Bundle& bundle;
  UserDefaultsController& defaults;
  NotificationCenter& notifications;
  Log& log;
  MovieOpener& movies;
  AliasManager& aliases;
  Workspace& workspace;
  InterfaceLoader& interfaces;
  URLLoading& urls;
  Pasteboard& generalPasteboard;
  DotMacKit& dotMac;
  SecretStore& secrets;
  CaptureKit& captureKit;
};

}  // namespace clipwave
