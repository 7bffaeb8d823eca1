// Port: media graphs. Each plays a video or one of the theme's sounds.
#pragma once

#include <QString>

#include <memory>

// The graph of one file. Event thread only.
struct MediaGraph {
    virtual ~MediaGraph() = default;

    // Builds the graph for a file. Raises 5 with the path in the detail when the file cannot be rendered.
    // Waits for the file, for at most some seconds.
    virtual void RenderFile(const QString& path) = 0;
    virtual void Run() = 0;
    virtual void Pause() = 0;
    // Halts the graph where it is.
    virtual void Stop() = 0;
    // Seconds. The position equals the duration once the file has ended, for whatever reason.
    virtual double Duration() = 0;
    virtual double CurrentPosition() = 0;
    virtual void SetCurrentPosition(double seconds) = 0;
    // Places the picture in a rectangle of its owner's surface, in pixels; `owner` is the surface's name.
    virtual void Place(const QString& owner, int left, int top, int width, int height) = 0;
    // The height in pixels of the picture inside the rectangle that was set last.
    virtual int Height() = 0;
    // Shows or hides the picture where it is placed. It is shown at first.
    virtual void SetVisible(bool visible) = 0;
};

// Event thread only.
struct MediaGraphs {
    virtual ~MediaGraphs() = default;

    // Creates an empty graph. `name` identifies its user: "Video", "SoundInsertCoin" and so on.
    virtual std::shared_ptr<MediaGraph> CreateGraph(const QString& name) = 0;
};
