#include "array/description/Writer.h"

#include "array/description/Form.h"

namespace array::description {

namespace {

std::string line(const nlohmann::json& entry, const Form& form);

std::string valueText(const nlohmann::json& value, const Member& member) {
    if (member.kind != Kind::List) {
        return value.dump();
    }
    std::string elements;
    for (const auto& element : value) {
        elements += (elements.empty() ? " " : ", ") + line(element, *member.elements);
    }
    return "[" + elements + " ]";
}

// An entry on one line, its members in the order of the format.
std::string line(const nlohmann::json& entry, const Form& form) {
    std::string members;
    for (const Member& member : form.members) {
        const auto value = entry.find(member.name);
        if (value != entry.end()) {
            members += (members.empty() ? " \"" : ", \"") + std::string(member.name) +
                       "\": " + valueText(*value, member);
        }
    }
    return "{" + members + " }";
}

} // namespace

Writer::Writer(std::ostream& text, Secrets secrets) : _text(text), _secrets(secrets) {
    _text << "{";
}

void Writer::setHost(const std::string& name) {
    beginMember("host");
    _text << nlohmann::json(name);
}

void Writer::setSystem(const std::string& name) {
    beginMember("system");
    _text << nlohmann::json(name);
}

void Writer::add(const EndpointEntry& entry) {
    write("endpoints", entry);
}

void Writer::add(const VolumeEntry& entry) {
    write("volumes", entry);
}

void Writer::add(const TargetEntry& entry) {
    write("targets", entry);
}

void Writer::add(const InitiatorEntry& entry) {
    write("initiators", entry);
}

void Writer::add(const GrantEntry& entry) {
    write("grants", entry);
}

void Writer::add(const LogicalUnitEntry& entry) {
    write("logicalUnits", entry);
}

void Writer::add(const SessionEntry& entry) {
    write("sessions", entry);
}

void Writer::finish() {
    openSection(sections.size());
    _text << "\n}\n";
}

void Writer::beginMember(std::string_view name) {
    _text << (_empty ? "" : ",") << "\n  \"" << name << "\": ";
    _empty = false;
}

// Ends the section that is open and begins the following ones up to this one, which may be the end.
void Writer::openSection(std::size_t section) {
    while (_opened <= section) {
        if (_opened > 0) {
            _text << (_sectionIsEmpty ? "]" : "\n  ]");
        }
        if (_opened < sections.size()) {
            beginMember(sections[_opened].name);
            _text << "[";
        }
        _sectionIsEmpty = true;
        ++_opened;
    }
}

void Writer::write(std::string_view section, const nlohmann::json& entry) {
    const std::size_t index = sectionIndex(section);
    openSection(index);
    nlohmann::json shown = entry;
    if (_secrets == Secrets::Leave && shown.value("secret", "") != "") {
        shown.erase("secret");
    }
    _text << (_sectionIsEmpty ? "" : ",") << "\n    " << line(shown, *sections[index].form);
    _sectionIsEmpty = false;
}

} // namespace array::description
