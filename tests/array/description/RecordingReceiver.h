#pragma once

#include <string>
#include <vector>

#include "array/description/Reader.h"

// Writes down what it receives, a line each; refuses an entry whose line is `refused`.
class RecordingReceiver : public array::description::Receiver {
public:
    std::vector<std::string> lines;
    std::string refused;

    void setHost(const std::string& name) override { take("host " + name); }
    void setSystem(const std::string& name) override { take("system " + name); }
    void add(const array::description::EndpointEntry& entry) override {
        take("endpoint " + entry.address + " " + std::to_string(entry.port));
    }
    void add(const array::description::VolumeEntry& entry) override {
        take("volume " + entry.name + " " + entry.elementName + " " + std::to_string(entry.size));
    }
    void add(const array::description::TargetEntry& entry) override {
        take("target " + entry.name + " " + entry.secret);
    }
    void add(const array::description::InitiatorEntry& entry) override {
        take("initiator " + entry.name + " " + entry.secret);
    }
    void add(const array::description::GrantEntry& entry) override {
        take("grant " + entry.target + " " + entry.initiator);
    }
    void add(const array::description::LogicalUnitEntry& entry) override {
        take("unit " + entry.target + " " + entry.volume + " " + std::to_string(entry.lun) + " " +
             entry.access);
    }
    void add(const array::description::SessionEntry& entry) override {
        std::string line = "session " + entry.target + " " + entry.initiator;
        for (const auto& connection : entry.connections) {
            line += " " + std::to_string(connection.endpoint);
        }
        take(line);
    }

private:
    void take(const std::string& line) {
        if (line == refused) {
            throw array::description::Refusal{"/name", "no room for it"};
        }
        lines.push_back(line);
    }
};
