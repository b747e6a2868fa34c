"""What is measured on which array, and the rows of the table with their goals."""

# Name: hosts, targets, units under each target, sessions with the first target.
ARRAYS = {
    "one object of each kind": (1, 1, 1, 0),
    "100,000 hosts": (100000, 1, 1, 0),
    "100 units": (1, 10, 10, 0),
    "10,000 units": (1, 1000, 10, 0),
    "100,000 units": (1, 10000, 10, 0),
    "10 sessions": (10, 1, 1, 10),
    "10,000 sessions": (10000, 1, 1, 10000),
    # With a unit for each of its volumes.
    "1,000,000 volumes": (100000, 100, 10000, 0),
    # So many hosts, targets and volumes each, and twice as many units.
    "1,000": (1000, 1000, 2, 0),
    "100,000": (100000, 100000, 2, 0),
    "1,000,000": (1000000, 1000000, 2, 0),
}

# Array: which benchmarks run on it, in process and on the wire.
SIZES = ("enumerateHosts|enumerateControllers|enumerateMappings|getHost|getController|"
         "findHostByName|findVolumeByKey|findManyVolumesByKey")
RUNS = {
    "one object of each kind": ("getHost", "getHostOnTheWire/real_time/threads:1$"),
    "100,000 hosts": ("enumerateHosts", "enumerateHostsOnTheWire|loopback"),
    "100 units": ("associators", None),
    "10,000 units": ("associators|readUnits|exposeAndHide",
                     "exposeAndHideOnTheWire/real_time/threads:1$"),
    "100,000 units": ("associators", None),
    "10 sessions": ("walk", None),
    "10,000 sessions": ("walk", None),
    "1,000,000 volumes": ("startUp|memory", None),
    "1,000": (SIZES + "|hostsByHand|flush|change|readBesideWriters",
              "enumerateHostsOnTheWire|getHostOnTheWire|exposeAndHideOnTheWire"),
    "100,000": ("getHost|flush|change/real_time/threads:1$", None),
    "1,000,000": (SIZES + "|flush|change/real_time/threads:1$", None),
}


# Array: how many clients read all of its hosts at once.
CLIENTS = {"1,000,000": (1, 16)}


def ratio(what, benchmark, array, against, of_array=None, at_most=None, at_least=None,
          unit="us"):
    """A row: a benchmark's cost per object against another's, and its goal."""
    return {"what": what, "top": (array, benchmark), "bottom": (of_array or array, against),
            "at_most": at_most, "at_least": at_least, "unit": unit}


def growth(what, benchmark, large, small, **goal):
    return ratio(f"{what}: {large} against {small}", benchmark, large, benchmark, small, **goal)


RATIOS = [
    ratio("a host by the provider, against by hand", "enumerateHosts", "1,000", "hostsByHand",
          at_most=1.15),
] + [
    growth(what, benchmark, "1,000,000", "1,000", at_most=goal)
    for what, benchmark, goal in (
        ("a host enumerated", "enumerateHosts", 1.2),
        ("a controller enumerated", "enumerateControllers", 1.2),
        ("a mapping enumerated", "enumerateMappings", 1.2),
        ("getInstance of a host", "getHost", 1.3),
        ("getInstance of a controller", "getController", 1.3),
        ("a host found by its name", "findHostByName", 1.3),
        ("a volume found by its key", "findVolumeByKey", 1.3),
    )
] + [
    growth("another volume of 1,000 found each time", "findManyVolumesByKey", "1,000,000",
           "1,000"),
    ratio("associators of a volume: a unit visited, against reading it", "associatorsOfVolume",
          "10,000 units", "readUnits", at_most=1.5),
    ratio("the same where each target has the volume: controllers are built",
          "associatorsOfSharedVolume", "10,000 units", "readUnits"),
    growth("a unit visited from a volume", "associatorsOfVolume", "100,000 units", "100 units"),
    growth("a volume of a controller", "associatorsOfController", "100,000 units", "100 units"),
] + [
    growth(f"{walk}, a session visited", f"walk/{walk}", "10,000 sessions", "10 sessions")
    for walk in ("sessionsOfTarget", "connectionsOfEndpoint", "targetOfSession",
                 "endpointOfConnection")
] + [
    growth("connectionsOfSession, a call", "walk/connectionsOfSession", "10,000 sessions",
           "10 sessions"),
    ratio("a volume of 1,000 exposed and hidden in one call, against of 10",
          "exposeAndHide/1000/real_time", "10,000 units", "exposeAndHide/10/real_time"),
    ratio("an expose and hide pair on the wire, against in process",
          "exposeAndHideOnTheWire/real_time/threads:1", "10,000 units",
          "exposeAndHide/1/real_time"),
    ratio("a host on the wire, against in process", "enumerateHostsOnTheWire/real_time",
          "100,000 hosts", "enumerateHosts"),
    growth("cost of a host on the wire", "enumerateHostsOnTheWire/real_time", "100,000 hosts",
           "1,000"),
    ratio("bytes of 100,000 hosts sent per second, against from memory", "loopback/real_time",
          "100,000 hosts", "enumerateHostsOnTheWire/real_time", at_least=0.25),
    ratio("GetInstance requests per second of 8 clients, against of a constant body",
          "constantBody/real_time/threads:8", "constant",
          "getHostOnTheWire/real_time/threads:8", "1,000", at_least=0.5),
] + [
    ratio(f"GetInstance: time of a request, {clients} clients against 1",
          f"getHostOnTheWire/real_time/threads:{clients}", "1,000",
          "getHostOnTheWire/real_time/threads:1") for clients in (8, 64)
] + [
    ratio("ExposePaths and HidePaths per second of 16 clients, against flushes", "flush/real_time",
          "1,000", "a method of 16 clients", at_least=1),
    ratio("changes per second, against flushes", "flush/real_time", "1,000",
          "change/real_time/threads:1"),
    ratio("changes per second of 16 threads, against flushes", "flush/real_time", "1,000",
          "change/real_time/threads:16"),
    growth("getInstance of a host", "getHost", "100,000", "1,000"),
    growth("a change", "change/real_time/threads:1", "100,000", "1,000"),
    growth("a change", "change/real_time/threads:1", "1,000,000", "1,000"),
    ratio("reads per second beside 1 writer, against none", "readBesideWriters/0", "1,000",
          "readBesideWriters/1"),
    ratio("reads per second beside 4 writers, against none", "readBesideWriters/0", "1,000",
          "readBesideWriters/4"),
    ratio("start-up of 1,000,000 volumes with units and 100,000 hosts, against 5 s",
          "startUp/iterations:1/manual_time", "1,000,000 volumes", "5 s", at_most=1, unit="s"),
    ratio("memory of the array for each of these 2,100,000 objects, against 400 bytes",
          "memory of an object", "1,000,000 volumes", "400 bytes", at_most=1, unit="bytes"),
] + [
    ratio(f"memory for each of {clients} clients that enumerate 1,000,000 hosts, against 16 MiB",
          f"memory/{clients}", "1,000,000", "16 MiB", at_most=1, unit="bytes")
    for clients in (1, 16)
] + [
    ratio("memory of smisd for each of 100,000 hosts, against 400 bytes", "memory",
          "100,000 hosts", "400 bytes", at_most=1, unit="bytes"),
]


# Of the same load on OpenPegasus and on smisd: requests per second, and memory.
OPENPEGASUS_RATIOS = [
    ratio(f"{what}, against OpenPegasus", operation, "OpenPegasus", operation, "smisd", at_least=3)
    for what, operation in (
        ("hosts enumerated per second", "enumerateHostsOnTheWire/real_time"),
        ("GetInstance per second of 8 clients", "getHostOnTheWire/real_time/threads:8"),
        ("volumes of a controller per second", "associatorsOnTheWire/real_time"),
        ("access of a mapping modified per second", "modifyMappingOnTheWire/real_time"),
        ("exposed and hidden per second of 16 clients",
         "exposeAndHideOnTheWire/real_time/threads:16"),
    )
] + [
    ratio("memory, against OpenPegasus with its providers", "memory", "smisd", "memory",
          "OpenPegasus", at_most=0.5, unit="MB"),
]
OPENPEGASUS_OPERATIONS = [row["top"][1] for row in OPENPEGASUS_RATIOS[:-1]]


def derived(costs):
    """What follows from the measurements, and what some are held against."""
    alone = costs["one object of each kind", "resident"]
    pair = costs["1,000", "exposeAndHideOnTheWire/real_time/threads:16"]
    volumes = costs["1,000,000 volumes", "memory/iterations:1"]
    return {
        ("100,000 hosts", "memory"): (costs["100,000 hosts", "resident"] - alone) / 100000,
        ("100,000 hosts", "400 bytes"): 400,
        ("1,000", "a method of 16 clients"): pair / 2,
        ("1,000,000 volumes", "memory of an object"): volumes / 2100000,
        ("1,000,000 volumes", "400 bytes"): 400,
        ("1,000,000 volumes", "5 s"): 5,
        ("1,000,000", "16 MiB"): 16 * 1024 * 1024,
    }
