#include <Pegasus/Common/Exception.h>

namespace Pegasus {

Exception::Exception() = default;
Exception::Exception(const String& message) : _message(message) {}
Exception::Exception(const Exception&) = default;
Exception& Exception::operator=(const Exception&) = default;
Exception::~Exception() = default;

const String& Exception::getMessage() const {
    return _message;
}

IndexOutOfBoundsException::IndexOutOfBoundsException() : Exception("index out of bounds") {}

AlreadyExistsException::AlreadyExistsException(const String& message)
    : Exception("already exists: " + message) {}

InvalidNameException::InvalidNameException(const String& name)
    : Exception("The CIM name is not valid: " + name) {}

InvalidNamespaceNameException::InvalidNamespaceNameException(const String& name)
    : Exception("invalid CIM namespace name: " + name) {}

UninitializedObjectException::UninitializedObjectException() : Exception("uninitialized object") {}

TypeMismatchException::TypeMismatchException() : Exception("type mismatch") {}

TypeMismatchException::TypeMismatchException(const String& message)
    : Exception("type mismatch: " + message) {}

DynamicCastFailedException::DynamicCastFailedException() : Exception("dynamic cast failed") {}

InvalidDateTimeFormatException::InvalidDateTimeFormatException()
    : Exception("invalid datetime format") {}

DateTimeOutOfRangeException::DateTimeOutOfRangeException(const String& message)
    : Exception("DateTime is out of range : " + message) {}

MalformedObjectNameException::MalformedObjectNameException(const String& objectName)
    : Exception("malformed object name: " + objectName) {}

BindFailedException::BindFailedException(const String& message)
    : Exception("Bind failed: " + message) {}

InvalidLocatorException::InvalidLocatorException(const String& locator)
    : Exception("Invalid locator: " + locator) {}

CannotCreateSocketException::CannotCreateSocketException() : Exception("Cannot create socket") {}

CannotConnectException::CannotConnectException(const String& message) : Exception(message) {}

AlreadyConnectedException::AlreadyConnectedException() : Exception("already connected") {}

NotConnectedException::NotConnectedException() : Exception("not connected") {}

ConnectionTimeoutException::ConnectionTimeoutException() : Exception("connection timed out") {}

SSLException::SSLException(const String& message) : Exception("SSL Exception: " + message) {}

CIMException::CIMException(CIMStatusCode code, const String& message)
    : Exception(message), _code(code) {}

CIMException::CIMException(const CIMException&) = default;
CIMException& CIMException::operator=(const CIMException&) = default;
CIMException::~CIMException() = default;

CIMStatusCode CIMException::getCode() const {
    return _code;
}

} // namespace Pegasus
