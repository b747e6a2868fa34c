#include "array/description/FormReader.h"

#include <algorithm>

#include "array/description/Reader.h"

namespace array::description {

namespace {

std::string expectation(const Member& member, bool inList) {
    switch (member.kind) {
    case Kind::Text:
        return "a string";
    case Kind::Number:
        return "a whole number from 0 to " + std::to_string(member.limit);
    case Kind::List:
        break;
    }
    return inList ? "an object" : "a list";
}

// What is wrong with the syntax and where; without what was last read, which may be a secret.
std::string syntaxError(const std::string& text) {
    const auto begin = text.find("] ");
    const auto end = text.find("; last read: ");
    return text.substr(begin + 2, end == std::string::npos ? end : end - begin - 2);
}

} // namespace

FormReader::FormReader(EntryHandler& handler) : _handler(handler) {}

bool FormReader::null() {
    refuseType("null");
}

bool FormReader::boolean(bool value) {
    refuseType(value ? "true" : "false");
}

bool FormReader::number_integer(number_integer_t value) {
    return take(Kind::Number, value, std::to_string(value));
}

bool FormReader::number_unsigned(number_unsigned_t value) {
    return take(Kind::Number, value, std::to_string(value));
}

bool FormReader::number_float(number_float_t value, const string_t& text) {
    return take(Kind::Number, value, text);
}

bool FormReader::string(string_t& value) {
    return take(Kind::Text, std::move(value), "a string");
}

bool FormReader::binary(binary_t&) {
    refuseType("binary data");
}

bool FormReader::start_object(std::size_t) {
    if (_levels.empty()) {
        _levels.push_back({&documentForm});
    } else if (_levels.back().inList) {
        _levels.push_back({_levels.back().member->elements});
    } else {
        refuseType("an object");
    }
    return true;
}

bool FormReader::key(string_t& name) {
    Level& level = _levels.back();
    const auto& members = level.form->members;
    const auto member = std::ranges::find(members, std::string_view(name), &Member::name);
    level.member = nullptr;
    if (member == members.end()) {
        throw DescriptionError((pointer() / name).to_string(), "this member is unknown");
    }
    const auto bit = 1U << (member - members.begin());
    level.member = &*member;
    if ((level.seen & bit) != 0) {
        refuse("this member stands twice");
    }
    level.seen |= bit;
    return true;
}

bool FormReader::end_object() {
    _levels.back().member = nullptr;
    checkComplete(_levels.back());
    nlohmann::json values = std::move(_levels.back().values);
    _levels.pop_back();
    if (_levels.empty()) {
        _handler.endOfDocument();
    } else {
        giveToParent(std::move(values));
    }
    return true;
}

bool FormReader::start_array(std::size_t) {
    if (_levels.empty()) {
        refuseType("a list");
    }
    Level& level = _levels.back();
    if (level.member->kind != Kind::List || level.inList) {
        refuseType("a list");
    }
    level.inList = true;
    level.index = 0;
    level.values[std::string(level.member->name)] = nlohmann::json::array();
    return true;
}

bool FormReader::end_array() {
    _levels.back().inList = false;
    if (_levels.size() == 1) {
        _handler.endOfSection(sectionIndex(_levels.back().member->name));
    }
    return true;
}

bool FormReader::parse_error(std::size_t, const std::string&,
                             const nlohmann::json::exception& error) {
    throw DescriptionError("", syntaxError(error.what()));
}

// A text or a number as the value of a member of that kind; described says what it is, where it is
// not what the member asks for.
bool FormReader::take(Kind kind, nlohmann::json value, std::string_view described) {
    const std::string_view shown = kind == Kind::Number ? std::string_view("a number") : described;
    if (_levels.empty() || _levels.back().member->kind != kind) {
        refuseType(shown);
    }
    Level& level = _levels.back();
    const Member& member = *level.member;
    const bool inRange = value.is_string() ||
                         (value.is_number_unsigned() && value.get<std::uint64_t>() <= member.limit);
    if (!inRange) {
        refuseType(described);
    }
    if (_levels.size() == 1) {
        _handler.text(member.name, value.get_ref<const std::string&>());
    } else {
        level.values[std::string(member.name)] = std::move(value);
    }
    return true;
}

void FormReader::checkComplete(const Level& level) const {
    for (std::size_t i = 0; i < level.form->members.size(); ++i) {
        const Member& member = level.form->members[i];
        if (member.presence == Presence::Required && (level.seen & (1U << i)) == 0) {
            refuse("\"" + std::string(member.name) + "\" is missing");
        }
    }
}

void FormReader::giveToParent(nlohmann::json values) {
    Level& parent = _levels.back();
    if (_levels.size() == 1) {
        _handler.entry(sectionIndex(parent.member->name), parent.index, std::move(values));
    } else {
        parent.values[std::string(parent.member->name)].push_back(std::move(values));
    }
    ++parent.index;
}

void FormReader::refuse(const std::string& message) const {
    throw DescriptionError(pointer().to_string(), message);
}

void FormReader::refuseType(std::string_view found) const {
    const std::string expected =
        _levels.empty() ? "an object" : expectation(*_levels.back().member, _levels.back().inList);
    refuse(expected + " is expected here, not " + std::string(found));
}

nlohmann::json::json_pointer FormReader::pointer() const {
    nlohmann::json::json_pointer result;
    for (const Level& level : _levels) {
        if (level.member == nullptr) {
            continue;
        }
        result /= std::string(level.member->name);
        if (level.inList) {
            result /= level.index;
        }
    }
    return result;
}

} // namespace array::description
