"""The memory that clients of large answers cost smisd."""

import concurrent.futures
import http.client
import sys

from measuring import Server, progress, smisd


def enumerate_instances(address, class_name):
    """Reads the answer and drops it."""
    body = f"""<?xml version="1.0" encoding="utf-8" ?>
<CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1" PROTOCOLVERSION="1.0"><SIMPLEREQ>
<IMETHODCALL NAME="EnumerateInstances">
<LOCALNAMESPACEPATH><NAMESPACE NAME="root"/><NAMESPACE NAME="snia"/></LOCALNAMESPACEPATH>
<IPARAMVALUE NAME="ClassName"><CLASSNAME NAME="{class_name}"/></IPARAMVALUE>
</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>"""
    connection = http.client.HTTPConnection(address)
    connection.request("POST", "/cimom", body, {
        "Content-Type": "application/xml", "CIMOperation": "MethodCall",
        "CIMMethod": "EnumerateInstances", "CIMObject": "root/snia"})
    response = connection.getresponse()
    if response.status != 200:
        sys.exit(f"bench: EnumerateInstances: {response.status} {response.reason}")
    dropped = bytearray(1 << 20)
    while response.readinto(dropped):
        pass


def memory_of_clients(state, clients):
    """Bytes that smisd needs, at most, for each of so many clients that read all hosts at once."""
    progress(f"memory for {clients} clients")
    with Server(smisd(state)) as server:
        enumerate_instances(server.address, "CIM_ControllerConfigurationService")
        loaded = server.resident()
        with concurrent.futures.ThreadPoolExecutor(clients) as pool:
            list(pool.map(enumerate_instances, [server.address] * clients,
                          ["CIM_StorageHardwareID"] * clients))
        return (server.resident("VmHWM") - loaded) / clients
