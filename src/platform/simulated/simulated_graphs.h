// The simulated media graphs: real files, whose positions move with the simulated time.
#pragma once

#include "platform/media_graph.h"

class CallRecord;
class Failures;
class SimulatedClock;

// A graph's position stands at its end. Its file is opened for its length and the size of its picture;
// nothing is shown.
class SimulatedGraphs : public MediaGraphs {
public:
    // Clock, record and failures outlive the graphs.
    SimulatedGraphs(const SimulatedClock& clock, CallRecord& record, const Failures& failures)
        : clock_(clock), record_(record), failures_(failures) {}

    std::shared_ptr<MediaGraph> CreateGraph(const QString& name) override;

private:
    const SimulatedClock& clock_;
    CallRecord& record_;
    const Failures& failures_;
};
