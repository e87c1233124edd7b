#ifndef MESSAGENEEDMANAGER_H
#define MESSAGENEEDMANAGER_H

class MessageNeedManager;

#endif
