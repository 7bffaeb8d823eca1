// All ports of the jukebox. The form is derived from this struct.
#pragma once

struct AudioLibrary;
struct Clock;
struct Dialogs;
struct Display;
struct EventPump;
struct Files;
struct Fonts;
struct MediaGraphs;
struct MessageBox;
struct SerialPort;
struct SystemPictures;
struct Windows;
struct ZlibLibrary;

struct Ports {
    AudioLibrary& audio;
    MediaGraphs& graphs;
    SerialPort& MSComm1;
    Display& display;
    Windows& windows;
    Fonts& fonts;
    Clock& clock;
    EventPump& pump;
    Dialogs& dialogs;
    MessageBox& messageBox;
    Files& files;
    ZlibLibrary& zlib;
    SystemPictures& pictures;
};
