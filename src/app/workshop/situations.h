// The situations in which a theme is shown.
#pragma once

#include <QString>

#include <utility>
#include <vector>

// What a person does, or the jukebox.
struct Step {
    enum Kind {
        kKey,        // presses the key of the code `value`
        kTick,       // lets `value` heartbeats pass
        kEnter,      // moves to the folder `name` and confirms; with other music, to the first folder
        kShootInKey, // presses the key `value` and takes the picture at a percentage of its animation
    };
    Kind kind = kKey;
    int value = 0;
    QString name = {};
    // Of kShootInKey: how many times events can run before the picture; 0 for the middle of a page turn.
    int turns = 0;
};

struct Situation {
    // Part of the file's name, and a description for a person.
    QString name;
    QString words;
    std::vector<Step> steps;
    // Keys of config.ini's section "Main" that differ from the usual.
    std::vector<std::pair<QString, QString>> settings = {};
    // Needs folders of the sample library; others use the home's own music if there is any.
    bool needsSamples = false;
};

const std::vector<Situation>& Situations();
