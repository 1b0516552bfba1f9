#!/usr/bin/env python3
"""Reads the interface definitions and writes the C++ that late binding needs.

    contract.py OUTPUT_FOLDER FRAGMENT.idl...

Writes contract.h (class ids, not-built bases, script adapters) and, for each fragment,
<fragment>_members.cpp with the member tables of its interfaces. The fragments are the only source:
one member per statement, attributes first, as the compiler of the type library reads them too.
"""

import pathlib
import re
import sys

SIMPLE = {
    "short": ("VT_I2", "SHORT"),
    "long": ("VT_I4", "LONG"),
    "float": ("VT_R4", "FLOAT"),
    "double": ("VT_R8", "DOUBLE"),
    "CURRENCY": ("VT_CY", "CY"),
    "DATE": ("VT_DATE", "DATE"),
    "BSTR": ("VT_BSTR", "BSTR"),
    "VARIANT_BOOL": ("VT_BOOL", "VARIANT_BOOL"),
    "VARIANT": ("VT_VARIANT", "VARIANT"),
}
KINDS = {
    "propget": ("get_", "DISPATCH_PROPERTYGET"),
    "propput": ("put_", "DISPATCH_PROPERTYPUT"),
    "propputref": ("putref_", "DISPATCH_PROPERTYPUTREF"),
    None: ("", "DISPATCH_METHOD"),
}


class Parameter:
    def __init__(self, text):
        match = re.fullmatch(r"\[(.*?)\]\s*(.+?)\s*(\w+)", text.strip(), re.S)
        if not match:
            sys.exit(f"contract.py: cannot read parameter '{text}'")
        self.attributes, self.type, self.name = match.groups()
        self.type = re.sub(r"\s+", "", self.type)
        self.retval = "retval" in self.attributes
        self.optional = "optional" in self.attributes
        default = re.search(r"defaultvalue\(([^)]*)\)", self.attributes)
        self.initial = default.group(1) if default and '"' not in default.group(1) else "0"
        self.by_reference = "out" in self.attributes

    def cpp_type(self):
        if self.type.startswith("SAFEARRAY("):
            return "SAFEARRAY**"
        base = self.type.rstrip("*")
        stars = "*" * self.type.count("*")
        return SIMPLE.get(base, (None, base))[1] + stars

    def slot(self):
        array = re.fullmatch(r"SAFEARRAY\((\w+)\)\*", self.type)
        if array:
            return f"Array<{SIMPLE[array.group(1)][0]}>"
        base = self.type.rstrip("*")
        depth = self.type.count("*") - (1 if self.by_reference else 0)
        suffix = "Ref" if self.by_reference and not self.retval else ""
        if depth == 1:
            return f"{'ResultPointer' if self.retval else 'Pointer' + suffix}<{base}>"
        variant_type, cpp = SIMPLE.get(base, ("VT_I4", base))
        name = "Result" if self.retval else "Value" + suffix
        return f"{name}<{variant_type}, {cpp}>"


class Member:
    def __init__(self, attributes, name, parameters):
        self.id = re.search(r"\bid\((-?\d+)\)", attributes).group(1)
        kind = re.search(r"\b(propget|propputref|propput)\b", attributes)
        self.prefix, self.kind = KINDS[kind.group(1) if kind else None]
        self.name = name
        parts = re.split(r",\s*(?=\[)", parameters) if parameters.strip() else []
        self.parameters = [Parameter(p) for p in parts]

    @property
    def method(self):
        return self.prefix + self.name

    def incoming(self):
        return [p for p in self.parameters if not p.retval]

    def result(self):
        return next((p for p in self.parameters if p.retval), None)

    def signature(self, named):
        return ", ".join(p.cpp_type() + (" " + p.name if named else "") for p in self.parameters)


class Interface:
    def __init__(self, name, body):
        self.name = name
        pattern = r"\[((?:[^\]\"]|\"[^\"]*\")*)\]\s*HRESULT\s+(\w+)\((.*?)\);"
        self.members = [Member(*m.groups()) for m in re.finditer(pattern, body, re.S)]
        if len(self.members) != body.count("HRESULT"):
            sys.exit(f"contract.py: cannot read every member of {name}")

    def adaptable(self):
        """Callers implement the interfaces named I...; scripts may too."""
        return re.fullmatch(r"_I[A-Z]\w+", self.name) is not None


def read(path):
    text = re.sub(r"//.*", "", path.read_text(encoding="utf-8"))
    interfaces = [Interface(*m.groups())
                  for m in re.finditer(r"\binterface (_\w+) : IDispatch \{(.*?)\n?\}", text, re.S)]
    classes = {}
    for name, body in re.findall(r"\bcoclass (\w+) \{(.*?)\}", text, re.S):
        events = re.search(r"\bdispinterface (\w+);", body)
        classes["_" + name] = (name, events.group(1) if events else "void")
    return interfaces, classes


def member_table(interface):
    lines = [f"template <>", f"const MemberTable& membersOf<{interface.name}>() {{"]
    for index, m in enumerate(interface.members):
        if m.incoming():
            rows = ", ".join(f'{{L"{p.name}", {str(p.optional).lower()}, {p.initial}}}'
                             for p in m.incoming())
            lines.append(f"    static constexpr Parameter p{index}[] = {{{rows}}};")
    lines.append("    static constexpr std::array members{" if interface.members
                 else "    static constexpr std::array<Member, 0> members{")
    for index, m in enumerate(interface.members):
        slots = [p.slot() for p in m.incoming()]
        call = "callMethod"
        if m.result():
            call = "callFunction"
            slots.insert(0, m.result().slot())
        arguments = ", ".join([interface.name, f"&{interface.name}::{m.method}"] + slots)
        parameters = f"p{index}" if m.incoming() else "std::span<const Parameter>{}"
        lines.append(f'        Member{{{m.id}, {m.kind}, L"{m.name}", {parameters}, '
                     f"&{call}<{arguments}>}},")
    lines += ["    };",
              "    static constexpr detail::MemberIndex<detail::familyCount(members), members.size()> "
              "index(members);",
              "    static constexpr MemberTable table(members, index);", "    return table;", "}", ""]
    return lines


def unbuilt(interface):
    lines = ["template <>", f"class Unbuilt<{interface.name}> : public {interface.name} {{",
             "  public:", f"    using Interface = {interface.name};"]
    for m in interface.members:
        lines.append(f"    HRESULT STDMETHODCALLTYPE {m.method}({m.signature(False)}) override {{ "
                     "return notImplemented(); }")
    return lines + ["};", ""]


def adapter(interface):
    name = interface.name
    lines = ["template <>", f"class Adapter<{name}> final : public AdapterBase<{name}> {{",
             "  public:", "    using AdapterBase::AdapterBase;"]
    for m in interface.members:
        slots = [p.slot() for p in m.incoming()]
        values = [p.name for p in m.incoming()]
        call = "forward"
        start = []
        if m.result():
            call = "forwardResult"
            slots.insert(0, m.result().slot())
            start = [m.result().name]
        template = f"<{', '.join(slots)}>" if slots else "<>"
        arguments = ", ".join(start + [f'L"{m.name}"', m.kind] + values)
        lines.append(f"    HRESULT STDMETHODCALLTYPE {m.method}({m.signature(True)}) override {{ "
                     f"return {call}{template}({arguments}); }}")
    lines += ["};", "template <>",
              f"inline HRESULT queryOrAdapt<{name}>(IUnknown* object, {name}** result) {{ "
              "return adapt(object, result); }",
              "template <>", f"inline constexpr bool isAdaptable<{name}> = true;", ""]
    return lines


def main():
    output = pathlib.Path(sys.argv[1])
    header = ["// Generated from the interface definitions; not to be edited.", "#pragma once", "",
              "#include <VelaUtil10.h>", "", "#include <array>", "",
              '#include "automation/object.h"', "", "namespace vela {", ""]
    fragments = [(pathlib.Path(p), *read(pathlib.Path(p))) for p in sys.argv[2:]]
    classes = {k: v for _, _, c in fragments for k, v in c.items()}
    for path, interfaces, _ in fragments:
        for interface in interfaces:
            name, events = classes[interface.name]
            header += [f"template <>", f"struct ClassOf<{interface.name}> {{",
                       f"    using Events = {'void' if events == 'void' else '::' + events};",
                       f"    static const GUID& id() {{ return __uuidof(::{name}); }}",
                       "    static HRESULT create(REFIID id, void** result);", "};",
                       "template <>", f"const MemberTable& membersOf<{interface.name}>();"]
            header += unbuilt(interface)
            if interface.adaptable():
                header += adapter(interface)
        source = ["// Generated from the interface definitions; not to be edited.",
                  '#include "contract.h"', "", "namespace vela {", ""]
        for interface in interfaces:
            source += member_table(interface)
        source += ["}  // namespace vela", ""]
        (output / f"{path.stem}_members.cpp").write_text("\n".join(source), encoding="utf-8")
    header += ["}  // namespace vela", ""]
    (output / "contract.h").write_text("\n".join(header), encoding="utf-8")


main()
