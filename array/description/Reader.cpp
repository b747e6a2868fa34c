#include "array/description/Reader.h"

#include <nlohmann/json.hpp>

#include "array/description/Form.h"
#include "array/description/FormReader.h"

namespace array::description {

namespace {

// Delivers each entry as soon as all sections that it refers to have been read.
class EntrySorter : public EntryHandler {
public:
    EntrySorter(Receiver& receiver, const std::function<void()>& afterEach)
        : _receiver(receiver), _afterEach(afterEach), _waiting(sections.size()) {}

    void text(std::string_view member, const std::string& value) override {
        at("/" + std::string(member), [&] {
            if (member == "host") {
                _receiver.setHost(value);
            } else {
                _receiver.setSystem(value);
            }
        });
    }

    void entry(std::size_t section, std::size_t index, nlohmann::json value) override {
        if ((sections[section].refersTo & ~_complete) == 0) {
            deliver(section, index, value);
        } else {
            _waiting[section].push_back(std::move(value));
        }
        _afterEach();
    }

    void endOfSection(std::size_t section) override { _complete |= 1U << section; }

    void endOfDocument() override {
        for (std::size_t section = 0; section < sections.size(); ++section) {
            for (std::size_t index = 0; index < _waiting[section].size(); ++index) {
                deliver(section, index, _waiting[section][index]);
            }
        }
    }

private:
    void deliver(std::size_t section, std::size_t index, const nlohmann::json& value) {
        at("/" + std::string(sections[section].name) + "/" + std::to_string(index),
           [&] { sections[section].deliver(value, _receiver); });
    }

    // Gives something to the receiver; what it refuses is a mistake there.
    template<class Delivery>
    static void at(const std::string& pointer, Delivery deliverIt) {
        try {
            deliverIt();
        } catch (const Refusal& refusal) {
            throw DescriptionError(pointer + refusal.member, refusal.message);
        }
    }

    Receiver& _receiver;
    const std::function<void()>& _afterEach;
    std::vector<std::vector<nlohmann::json>> _waiting; // by section, in the order of the text
    std::uint32_t _complete = 0;                       // a bit for each section
};

} // namespace

void read(std::istream& text, Receiver& receiver, const std::function<void()>& afterEach) {
    EntrySorter sorter(receiver, afterEach);
    FormReader reader(sorter);
    try {
        nlohmann::json::sax_parse(text, &reader);
    } catch (const std::ios_base::failure& failure) {
        throw DescriptionError("", "reading failed: " + failure.code().message());
    }
}

} // namespace array::description
