#include <Pegasus/Common/CIMParamValue.h>

namespace Pegasus {

class CIMParamValueRep final : public SharedRep {
public:
    CIMParamValueRep(const String& name_, const CIMValue& value_, bool isTyped_)
        : value(value_), isTyped(isTyped_) {
        setName(name_);
    }

    void setName(const String& x) {
        if (x.size() == 0) {
            throwUninitializedObject();
        }
        name = x;
    }

    String name;
    CIMValue value;
    bool isTyped;
};

CIMParamValue::CIMParamValue(CIMParamValueRep* rep) : _rep(rep) {}

CIMParamValue::CIMParamValue(String parameterName, CIMValue value, Boolean isTyped)
    : _rep(new CIMParamValueRep(parameterName, value, isTyped)) {}

String CIMParamValue::getParameterName() const {
    return _rep->name;
}

CIMValue CIMParamValue::getValue() const {
    return _rep->value;
}

Boolean CIMParamValue::isTyped() const {
    return _rep->isTyped;
}

void CIMParamValue::setParameterName(String& parameterName) {
    _rep->setName(parameterName);
}

void CIMParamValue::setValue(CIMValue& value) {
    _rep->value = value;
}

void CIMParamValue::setIsTyped(Boolean isTyped) {
    _rep->isTyped = isTyped;
}

CIMParamValue CIMParamValue::clone() const {
    return CIMParamValue(new CIMParamValueRep(*_rep));
}

} // namespace Pegasus
