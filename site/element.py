"""The properties of the GStreamer element, from the element itself."""

import os
import re

from tables import code, table

INTRODUCTION = """# GStreamer: vistreldemosaic

What `gst-inspect-1.0 vistreldemosaic` prints. [Live pictures](/docs/live.md) explains the element.
All properties may change while frames pass; those with a star can be controlled.

## Properties

{properties}
## Pads
"""


def values(spec):
    enum = getattr(spec, "enum_class", None)
    if enum:
        return ", ".join(code(value.value_nick) for value in enum.__enum_values__.values())
    if hasattr(spec, "minimum"):
        return f"{spec.minimum:g} to {spec.maximum:.10g}"
    return "text" if spec.value_type.name == "gchararray" else "array"


def row(spec, controllable):
    default = getattr(spec, "default_value", None)
    return [code(spec.name) + (" *" if spec.flags & controllable else ""), spec.blurb, values(spec),
            code(getattr(default, "value_nick", default))]


def pad(template):
    """The media types of a pad, with the values of each field."""
    caps, text = template.get_caps(), f"\n### {template.name_template}\n"
    for structure in map(caps.get_structure, range(caps.get_size())):
        fields = re.findall(r", ([a-z-]+)=\(\w+\)(\[.*?\]|\{.*?\}|\w+)", structure.to_string())
        text += f"\n`{structure.get_name()}`\n\n" + table(["Field", "Values"], fields)
    return text


def pages(_, build):
    os.environ["GST_PLUGIN_PATH"] = str(build / "gstreamer")
    os.environ["GST_REGISTRY"] = str(build / "site" / "gstreamer.registry")
    import gi
    gi.require_version("Gst", "1.0")
    from gi.repository import Gst
    Gst.init(None)

    factory = Gst.ElementFactory.find("vistreldemosaic")
    specs = [spec for spec in factory.create(None).list_properties()
             if spec.owner_type.name == "VistrelDemosaic"]
    heads = ["Property", "Meaning", "Values", "Default"]
    properties = table(heads, (row(spec, Gst.PARAM_CONTROLLABLE) for spec in specs))
    return {"gstreamer.md": INTRODUCTION.format(properties=properties)
            + "".join(map(pad, factory.get_static_pad_templates()))}
