// Pieces of CIM-XML, as text.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace wire {

using Xml = std::string;

// Text with the characters escaped that mean something in XML.
Xml escaped(const std::string& text);

Xml value(const std::string& text);
Xml values(const std::vector<std::string>& texts);
Xml classNamed(const std::string& name);

// Key bindings of type string, in order.
Xml instanceName(const std::string& className,
                 const std::vector<std::pair<std::string, std::string>>& keys);

// An instance as it is sent to be stored, with properties as below.
Xml namedInstance(const Xml& instanceName, const std::string& className, const Xml& properties);
Xml property(const std::string& name, const std::string& type, const std::string& text);

Xml reference(const Xml& instanceName);
Xml references(const std::vector<Xml>& instanceNames);

} // namespace wire
