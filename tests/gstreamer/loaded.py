"""An error of the element is a message, whatever the process has loaded before GStreamer, which
loads libunwind. loaded.py FOLDER_OF_THE_PLUGIN"""

import ctypes
import os
import subprocess
import sys

PIPELINE = (b"videotestsrc num-buffers=1 ! video/x-bayer,format=rggb,width=64,height=64 ! "
            b"vistreldemosaic black=x ! fakesink")
PLAYING, ERROR = 4, 2


def run(first):
    if first:
        ctypes.CDLL(first)
    gst = ctypes.CDLL("libgstreamer-1.0.so.0", ctypes.RTLD_GLOBAL)
    for name in ("gst_parse_launch", "gst_element_get_bus", "gst_bus_timed_pop_filtered"):
        getattr(gst, name).restype = ctypes.c_void_p
    gst.gst_init(None, None)
    pipeline = ctypes.c_void_p(gst.gst_parse_launch(PIPELINE, None))
    gst.gst_element_set_state(pipeline, PLAYING)
    bus = ctypes.c_void_p(gst.gst_element_get_bus(pipeline))
    seconds = ctypes.c_uint64(20 * 10**9)
    return 0 if gst.gst_bus_timed_pop_filtered(bus, seconds, ERROR) else "no message"


if os.path.isdir(sys.argv[1]):
    environment = os.environ | {"GST_PLUGIN_PATH": sys.argv[1], "GST_REGISTRY_UPDATE": "yes"}
    for library in ("", "libstdc++.so.6"):
        subprocess.run([sys.executable, __file__, "--first", library], env=environment, check=True)
else:
    sys.exit(run(sys.argv[2]))
