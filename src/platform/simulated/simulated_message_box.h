// The simulated message boxes, which close by themselves.
#pragma once

#include "platform/message_box.h"

class CallRecord;

class SimulatedMessageBox : public MessageBox {
public:
    // The record outlives the boxes.
    explicit SimulatedMessageBox(CallRecord& record) : record_(record) {}

    void Show(const QString& title, const QString& text) override;
    // Always no: that is the answer of a box closed without one.
    bool AskYesNo(const QString& title, const QString& text) override;

private:
    CallRecord& record_;
};
