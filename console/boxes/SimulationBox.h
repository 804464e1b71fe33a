#pragma once

#include "console/lists/WindowView.h"
#include "pipeline/EventIntake.h"
#include "pipeline/IncomingEvent.h"
#include "platform/Clock.h"
#include "platform/EventLoop.h"
#include "translation/Translations.h"

#include <random>

namespace nordkeep {

/// What an operator asks the simulation for.
struct SimulatedAlarm {
    std::size_t port = 0;  // 0 is none, else the place in the list of ports, from 1
    int protocol = 0;
    Text alarmCode{};
    Text extraText{};
    Text prio{};  // empty: none
    Text type{};
};

/// A port that a simulated alarm can come from.
struct SimulatedPort {
    Text description{};
    const EventPort* event = nullptr;
};

/// The ports of this copy, which may change while the program runs.
class SimulatedPorts {
 public:
    virtual ~SimulatedPorts() = default;
    virtual std::vector<SimulatedPort> PortsToSimulate() const = 0;
};

/// Makes events as a receiver would, for tests and training. They go the way of all events, and are marked
/// in their extra text.
class SimulationBox {
 public:
    struct Needs {
        EventIntake& intake;
        const Translations& translations;
        const Clock& clock;
        EventLoop& loop;
        const SimulatedPorts& ports;
        std::uint32_t randomSeed = 1;
    };
    explicit SimulationBox(const Needs& needs);
    ~SimulationBox() { *isAlive_ = false; }
    SimulationBox(const SimulationBox&) = delete;
    SimulationBox& operator=(const SimulationBox&) = delete;

    void SetView(WindowView& view) { view_ = &view; }

    /// The dialog for one alarm.
    void Open();
    void Close();
    bool IsOpen() const { return isOpen_; }
    std::vector<Text> PortNames() const;
    void Raise(const SimulatedAlarm& wanted);
    /// A hundred events of random objects, ten in a turn of the loop. A second call while these run adds
    /// none.
    void RaiseHundred();

 private:
    void RaiseSome();
    void RaiseRandom();

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    bool isOpen_ = false;
    int left_ = 0;
    std::mt19937 random_;
    std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace nordkeep
