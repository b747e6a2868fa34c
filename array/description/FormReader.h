#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "array/description/Form.h"

namespace array::description {

// Takes the parts of a description, each of the right form.
class EntryHandler {
public:
    virtual ~EntryHandler() = default;
    virtual void text(std::string_view member, const std::string& value) = 0;
    virtual void entry(std::size_t section, std::size_t index, nlohmann::json value) = 0;
    virtual void endOfSection(std::size_t section) = 0;
    virtual void endOfDocument() = 0;
};

// Checks the events of a JSON parser against the format and puts the entries together. Throws
// DescriptionError at the first mistake.
class FormReader : public nlohmann::json_sax<nlohmann::json> {
public:
    explicit FormReader(EntryHandler& handler);

    bool null() override;
    bool boolean(bool value) override;
    bool number_integer(number_integer_t value) override;
    bool number_unsigned(number_unsigned_t value) override;
    bool number_float(number_float_t value, const string_t& text) override;
    bool string(string_t& value) override;
    bool binary(binary_t& value) override;
    bool start_object(std::size_t size) override;
    bool key(string_t& name) override;
    bool end_object() override;
    bool start_array(std::size_t size) override;
    bool end_array() override;
    bool parse_error(std::size_t position, const std::string& lastToken,
                     const nlohmann::json::exception& error) override;

private:
    // An object that has begun and not ended.
    struct Level {
        const Form* form;
        const Member* member = nullptr; // whose value is being read
        bool inList = false;            // that value is a list that has begun
        std::size_t index = 0;          // the next element of the list
        std::uint32_t seen = 0;         // a bit for each member
        nlohmann::json values = nlohmann::json::object();
    };

    bool take(Kind kind, nlohmann::json value, std::string_view described);
    void checkComplete(const Level& level) const;
    void giveToParent(nlohmann::json values);
    [[noreturn]] void refuse(const std::string& message) const;
    [[noreturn]] void refuseType(std::string_view found) const;
    nlohmann::json::json_pointer pointer() const;

    EntryHandler& _handler;
    std::vector<Level> _levels; // the document first
};

} // namespace array::description
