"""What is asked, in this order. Each step yields a name and a request and is sent the answer of the
first server, from which it makes the next requests."""

import pathlib
import re
import xml.etree.ElementTree as ET

import normal
import pairs
from asking import (class_name, extrinsic, instance_name, intrinsic, recorded, reference,
                      references, value, values)

ASSOCIATIONS = ("CIM_AuthorizedSubject", "CIM_AuthorizedTarget", "CIM_ProtocolControllerForUnit",
                "CIM_EndpointOfNetworkPipe", "CIM_NetworkPipeComposition")
WALKS = ("AssociatorNames", "Associators", "ReferenceNames", "References")
HOSTS = "CIM_StorageHardwareIDManagementService"
PATHS = "CIM_ControllerConfigurationService"
CHUNKS = ("TE: trailers",)
# Instances that nothing enumerates.
BY_KEY = (
    ("CIM_iSCSISession", {"InstanceID": "Ovrin:11000001"}),
    ("CIM_iSCSIConnection", {"InstanceID": "Ovrin:10000001"}),
    ("CIM_iSCSISessionSettings", {"InstanceID": "Ovrin:23000001"}),
    ("CIM_iSCSIConnectionSettings", {"InstanceID": "Ovrin:22000001"}),
    ("CIM_iSCSILoginStatistics", {"InstanceID": "Ovrin:0E000001"}),
    ("CIM_iSCSISessionFailures", {"InstanceID": "Ovrin:0E000001"}),
    ("CIM_iSCSISessionStatistics", {"InstanceID": "Ovrin:0E000001"}),
    ("Ovrin_MACStatistics", {"InstanceID": "Ovrin:0E000001"}),
    ("CIM_AuthorizedPrivilege", {"InstanceID": "Ovrin:0D000001"}),
    ("CIM_SharedSecret", {"RemoteID": "Ovrin:0E000001"}),
    ("CIM_SharedSecret", {"RemoteID": "Ovrin:0D000001"}),
    ("CIM_StorageVolume", {"DeviceID": "Ovrin:17000001"}),
)
PER_CLASS = 4  # instances of each class that are looked at one by one


def found(answer, tag):
    """Elements of the answer."""
    root = normal.body(answer)
    return [] if root is None else list(root.iter(tag))


def text_of(element):
    return ET.tostring(element, encoding="unicode").strip()


def everything():
    """All of them."""
    for name, request in pairs.requests().items():
        yield f"pair {name}", recorded(request)
    classes = yield from class_requests()
    for name in classes:
        yield from enumerations(name)
    paths = yield from all_paths(classes)
    for name, of_class in paths.items():
        for number, path in enumerate(of_class[:PER_CLASS]):
            yield from instance(f"{name} {number}", path)
            yield from walks(f"{name} {number}", path, classes)
        yield from pulls(name, of_class[0])
    yield from strangers(classes)
    yield from changes(paths)
    yield from methods(paths)
    yield from life_of_a_host()


def one_of_each():
    """One request to each class, as a server's providers are looked at when they are to fail alike."""
    registration = pathlib.Path(__file__).parent.parent.parent / "mof" / "access-registration.mof"
    for name in sorted(set(re.findall(r'ClassName = "(.*)"', registration.read_text()))):
        path = instance_name(name, InstanceID="Ovrin:0D000001", DeviceID="Ovrin:0E000001")
        yield f"EnumerateInstances {name}", intrinsic("EnumerateInstances",
                                                      ClassName=class_name(name))
        yield f"get {name}", intrinsic("GetInstance", InstanceName=path)
        yield f"AssociatorNames of {name}", intrinsic("AssociatorNames", ObjectName=path)
    yield "create host", extrinsic(
        HOSTS, "CreateStorageHardwareID", ElementName=("string", value("x")),
        StorageID=("string", value("iqn.2026-01.com.example:x")), IDType=("uint16", value(5)))


def all_paths(classes):
    """Paths by class: what can be enumerated, and what can be walked to from there."""
    paths = {}
    unseen = []

    def note(answer):
        for element in found(answer, "INSTANCENAME"):
            of_class = paths.setdefault(element.get("CLASSNAME"), [])
            if text_of(element) not in of_class:
                of_class.append(text_of(element))
                unseen.append(text_of(element))

    for name in classes:
        note((yield f"paths of {name}", intrinsic("EnumerateInstanceNames",
                                                  ClassName=class_name(name))))
    for name, keys in BY_KEY:
        path = instance_name(name, **keys)
        paths.setdefault(name, []).append(path)
        unseen.append(path)
    while unseen:
        path = unseen.pop()
        for walk in WALKS:
            note((yield f"{walk} of {path}", intrinsic(walk, ObjectName=path)))
    return paths


def class_requests():
    answer = yield "all classes", intrinsic("EnumerateClassNames", DeepInheritance=True)
    classes = sorted(element.get("NAME") for element in found(answer, "CLASSNAME"))
    yield "top classes", intrinsic("EnumerateClassNames")
    for deep in (True, False):
        for local in (True, False):
            yield f"class bodies deep={deep} local={local}", intrinsic(
                "EnumerateClasses", DeepInheritance=deep, LocalOnly=local, IncludeClassOrigin=True)
    for name in classes:
        yield f"class {name}", intrinsic("GetClass", ClassName=class_name(name))
        yield f"whole class {name}", intrinsic(
            "GetClass", ClassName=class_name(name), LocalOnly=False, IncludeQualifiers=True,
            IncludeClassOrigin=True)
        yield f"class names below {name}", intrinsic("EnumerateClassNames",
                                                     ClassName=class_name(name))
        for walk in WALKS:
            yield f"{walk} of class {name}", intrinsic(walk, ObjectName=class_name(name))
    yield "class of none", intrinsic("GetClass", ClassName=class_name("CIM_None"))
    yield "qualifiers", intrinsic("EnumerateQualifiers")
    return classes


def enumerations(name):
    wanted = class_name(name)
    for operation in ("EnumerateInstanceNames", "EnumerateInstances"):
        yield f"{operation} {name}", intrinsic(operation, ClassName=wanted)
        yield f"{operation} {name} in chunks", intrinsic(operation, CHUNKS, ClassName=wanted)
    for flag in ("DeepInheritance", "LocalOnly", "IncludeQualifiers", "IncludeClassOrigin"):
        for given in (True, False):
            yield f"instances of {name} {flag}={given}", intrinsic(
                "EnumerateInstances", **{"ClassName": wanted, flag: given})
    for names in ((), ("ElementName", "InstanceID", "instanceid"), ("None",)):
        yield f"instances of {name} with {names}", intrinsic(
            "EnumerateInstances", ClassName=wanted, PropertyList=values(*names))
    yield f"instances of {name} in lower case", intrinsic(
        "EnumerateInstances", ClassName=class_name(name.lower()))


def instance(title, path):
    answer = yield f"get {title}", intrinsic("GetInstance", InstanceName=path)
    yield f"get {title} with all", intrinsic("GetInstance", InstanceName=path, LocalOnly=False,
                                             IncludeQualifiers=True, IncludeClassOrigin=True)
    for names in ((), ("ElementName", "InstanceID"), ("DeviceID", "None", "deviceid")):
        yield f"get {title} with {names}", intrinsic("GetInstance", InstanceName=path,
                                                     PropertyList=values(*names))
    properties = [element.get("NAME") for tag in ("PROPERTY", "PROPERTY.ARRAY", "PROPERTY.REFERENCE")
                  for element in found(answer, tag)]
    for name in sorted(properties) + ["None"]:
        yield f"property {name} of {title}", intrinsic("GetProperty", InstanceName=path,
                                                       PropertyName=value(name))


def walks(title, path, classes):
    filters = [{}]
    filters += [{"AssocClass": name} for name in ASSOCIATIONS + ("CIM_Dependency", "CIM_Component")]
    filters += [{"ResultClass": name} for name in classes if name.startswith(
        ("CIM_StorageH", "CIM_SCSI", "CIM_Auth", "CIM_iSCSIS", "CIM_iSCSIC", "CIM_ManagedE"))]
    filters += [{"Role": role} for role in ("Antecedent", "DEPENDENT", "Privilege", "GroupComponent")]
    filters += [{"ResultRole": role} for role in ("Dependent", "PrivilegedElement", "TargetElement")]
    filters += [{"AssocClass": "CIM_None"}, {"ResultClass": "CIM_None"}, {"Role": "no name"}]
    for walk in WALKS:
        for given in filters:
            if walk.startswith("Reference") and ("AssocClass" in given or "ResultRole" in given):
                continue
            arguments = {name: class_name(text) if name.endswith("Class") else value(text)
                         for name, text in given.items()}
            yield f"{walk} of {title} {given}", intrinsic(walk, ObjectName=path, **arguments)
        yield f"{walk} of {title} in chunks", intrinsic(walk, CHUNKS, ObjectName=path)
    for walk in ("Associators", "References"):
        yield f"{walk} of {title} with all", intrinsic(walk, ObjectName=path, IncludeQualifiers=True,
                                                       IncludeClassOrigin=True)
        yield f"{walk} of {title} with two properties", intrinsic(
            walk, ObjectName=path, PropertyList=values("InstanceID", "DeviceID"))


def pulls(name, path):
    """Each kind of enumeration in parts: of one object, then one more, then the rest."""
    def pull(method, count):
        return lambda context: intrinsic(method, EnumerationContext=value(context or "none"),
                                         MaxObjectCount=value(count))

    of_class = {"ClassName": class_name(name)}
    of_path = {"InstanceName": path}
    for kind, with_what, given in (
            ("EnumerateInstances", "PullInstancesWithPath", of_class),
            ("EnumerateInstancePaths", "PullInstancePaths", of_class),
            ("AssociatorInstances", "PullInstancesWithPath", of_path),
            ("AssociatorInstancePaths", "PullInstancePaths", of_path),
            ("ReferenceInstances", "PullInstancesWithPath", of_path),
            ("ReferenceInstancePaths", "PullInstancePaths", of_path)):
        yield f"Open{kind} of {name}", intrinsic(f"Open{kind}", MaxObjectCount=value(1), **given)
        yield f"{with_what} of {name} after Open{kind}", pull(with_what, 1)
        yield f"{with_what} of {name} for the rest of Open{kind}", pull(with_what, 100)
        yield f"{with_what} of {name} after the end of Open{kind}", pull(with_what, 1)
        yield f"Open{kind} of {name} without a count", intrinsic(f"Open{kind}", **given)
        yield f"Close after Open{kind} of {name}", lambda context: intrinsic(
            "CloseEnumeration", EnumerationContext=value(context or "none"))


def strangers(classes):
    """Paths of no object: another serial, another class, keys that are missing or wrong."""
    for name in classes:
        for title, path in (
                ("another serial", instance_name(name, InstanceID="Ovrin:0D00FFFF")),
                ("another device", instance_name(name, DeviceID="Ovrin:0E00FFFF")),
                ("another text", instance_name(name, InstanceID="x", DeviceID="y", Name="z")),
                ("no keys", instance_name(name))):
            yield f"get {name} by {title}", intrinsic("GetInstance", InstanceName=path)
            for walk in WALKS:
                yield f"{walk} of {name} by {title}", intrinsic(walk, ObjectName=path)
            yield f"delete {name} by {title}", intrinsic("DeleteInstance", InstanceName=path)


def changes(paths):
    """Every instance is written back as it was read; then one of each class is to be deleted."""
    for name, of_class in paths.items():
        for number, path in enumerate(of_class[:PER_CLASS]):
            answer = yield f"read {name} {number}", intrinsic("GetInstance", InstanceName=path)
            for element in found(answer, "INSTANCE"):
                named = f"<VALUE.NAMEDINSTANCE>{path}{text_of(element)}</VALUE.NAMEDINSTANCE>"
                yield f"modify {name} {number}", intrinsic("ModifyInstance", ModifiedInstance=named)
                for names in ((), ("ElementName",), ("Secret",), ("MaxConnections",)):
                    yield f"modify {names} of {name} {number}", intrinsic(
                        "ModifyInstance", ModifiedInstance=named, PropertyList=values(*names))
                yield f"create {name} {number}", intrinsic("CreateInstance",
                                                           NewInstance=text_of(element))
                yield f"set a property of {name} {number}", intrinsic(
                    "SetProperty", InstanceName=path, PropertyName=value("ElementName"),
                    NewValue=value("set"))
            yield f"{name} {number} afterwards", intrinsic("GetInstance", InstanceName=path)
        yield f"delete {name}", intrinsic("DeleteInstance", InstanceName=of_class[-1])
        yield f"{name} after that", intrinsic("EnumerateInstanceNames", ClassName=class_name(name))


def methods(paths):
    """Each method with nothing, with one parameter, with wrong ones; and methods that are none."""
    for service in (HOSTS, PATHS):
        answer = yield f"methods of {service}", intrinsic("GetClass", ClassName=class_name(service),
                                                          LocalOnly=False)
        for method in sorted(element.get("NAME") for element in found(answer, "METHOD")):
            yield f"{method} with nothing", extrinsic(service, method)
            yield f"{method} in chunks", extrinsic(service, method, CHUNKS)
            yield f"{method} with a stranger", extrinsic(service, method,
                                                         Stranger=("string", value("x")))
            yield f"{method} with a name", extrinsic(service, method,
                                                     ElementName=("string", value("x")))
        yield f"no method of {service}", extrinsic(service, "NoMethod")
    for name in paths:
        yield f"a method of {name}", extrinsic(name, "RequestStateChange")


def life_of_a_host():
    """A host is registered, sees volumes, is changed, loses them and goes."""
    def look(when):
        for name in ("CIM_StorageHardwareID", "CIM_SCSIProtocolController", "CIM_AuthorizedSubject",
                     "CIM_AuthorizedPrivilege", "CIM_AuthorizedTarget", "CIM_ProtocolControllerForUnit",
                     "CIM_SharedSecret", "CIM_iSCSISessionSettings", "CIM_iSCSIConnectionSettings"):
            yield f"{name} {when}", intrinsic("EnumerateInstances", ClassName=class_name(name))

    new = "iqn.2026-01.com.example:compared"
    for id_type in (5, 7, 2, 9999):
        yield f"create host of type {id_type}", extrinsic(
            HOSTS, "CreateStorageHardwareID", ElementName=("string", value("compared")),
            StorageID=("string", value(new)), IDType=("uint16", value(id_type)))
    yield "create host with a bad name", extrinsic(
        HOSTS, "CreateStorageHardwareID", ElementName=("string", value("bad")),
        StorageID=("string", value("no name")), IDType=("uint16", value(5)))
    answer = yield "hosts", intrinsic("EnumerateInstances",
                                      ClassName=class_name("CIM_StorageHardwareID"))
    hosts = [text_of(element) for element in found(answer, "INSTANCENAME")]
    yield from look("with the host")
    answer = yield "controllers", intrinsic("EnumerateInstanceNames",
                                            ClassName=class_name("CIM_SCSIProtocolController"))
    controllers = [text_of(element) for element in found(answer, "INSTANCENAME")]
    volumes = ("60014051A2B3C4D5E6F7A8B9C0D1E2F4", "60014051A2B3C4D5E6F7A8B9C0D1E2F5")
    for title, given in (
            ("one volume", {"LUNames": ("string", values(volumes[0])),
                            "DeviceNumbers": ("string", values("17")),
                            "DeviceAccesses": ("uint16", values(2))}),
            ("two volumes", {"LUNames": ("string", values(*volumes)),
                             "DeviceNumbers": ("string", values("18", "19")),
                             "DeviceAccesses": ("uint16", values(2, 3))}),
            ("a volume twice", {"LUNames": ("string", values(volumes[1], volumes[1])),
                                "DeviceNumbers": ("string", values("20", "20")),
                                "DeviceAccesses": ("uint16", values(2, 2))}),
            ("no such volume", {"LUNames": ("string", values("6001")),
                                "DeviceNumbers": ("string", values("21")),
                                "DeviceAccesses": ("uint16", values(2))})):
        for number, controller in enumerate(controllers):
            arguments = dict(given, InitiatorPortIDs=("string", values(new)),
                             ProtocolControllers=("reference", references(controller)))
            yield f"expose {title} at {number}", extrinsic(PATHS, "ExposePaths", **arguments)
            yield from look(f"with {title} at {number}")
    yield from attach(controllers)
    for volume in volumes:
        for number, controller in enumerate(controllers):
            yield f"hide {volume} at {number}", extrinsic(
                PATHS, "HidePaths", LUNames=("string", values(volume)),
                InitiatorPortIDs=("string", values(new)),
                ProtocolControllers=("reference", references(controller)))
            yield from look(f"without {volume} at {number}")
    for number, host in enumerate(hosts):
        yield f"delete host {number}", extrinsic(HOSTS, "DeleteStorageHardwareID",
                                                 HardwareID=("reference", reference(host)))
    yield from look("without hosts")
    yield "Associators of the privilege of no host", intrinsic(
        "Associators", AssocClass=class_name("CIM_AuthorizedSubject"),
        ResultClass=class_name("CIM_StorageHardwareID"),
        ObjectName=instance_name("CIM_AuthorizedPrivilege", InstanceID="Ovrin:0D000001"))


def attach(controllers):
    volumes = yield "volumes", intrinsic("EnumerateInstanceNames",
                                         ClassName=class_name("CIM_ProtocolControllerForUnit"))
    devices = [text_of(element) for element in found(volumes, "INSTANCENAME")
               if element.get("CLASSNAME") == "CIM_StorageVolume"]
    for method in ("AttachDevice", "DetachDevice"):
        for number, device in enumerate(devices[:2]):
            yield f"{method} {number}", extrinsic(
                PATHS, method, ProtocolController=("reference", reference(controllers[0])),
                Device=("reference", reference(device)), DeviceNumber=("string", value("40")))
    yield "delete a controller", extrinsic(
        PATHS, "DeleteProtocolController",
        ProtocolController=("reference", reference(controllers[-1])))
