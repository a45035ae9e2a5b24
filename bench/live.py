"""Times of vistreldemosaic in a pipeline, beside GStreamer's element for mosaics of 8 bits.

    live.py [--rounds N] [--size WxH] [--frames N]

A frame's time is what more frames add to the processor time of a pipeline, so starting it costs
nothing. The fastest round counts.
"""

import argparse
import resource
import subprocess


def processor_time(pipeline):
    def used():
        usage = resource.getrusage(resource.RUSAGE_CHILDREN)
        return usage.ru_utime + usage.ru_stime

    start = used()
    subprocess.run(["gst-launch-1.0", "-q", *pipeline.split()], check=True,
                   timeout=120)
    return used() - start


def source(frames, size, gray, bayer):
    """One picture again and again, in the same memory."""
    shape = f"width={size[0]},height={size[1]}"
    return (f"videotestsrc num-buffers=1 pattern=snow ! video/x-raw,format={gray},{shape} ! "
            f"imagefreeze num-buffers={frames} ! {renamed(f'video/x-bayer,format={bayer}', size)}")


def renamed(caps, size):
    return ("capssetter join=false replace=true "
            f"caps={caps},width={size[0]},height={size[1]},framerate=25/1")


def frame_time(make, frames):
    """Milliseconds a frame. make(n) describes a pipeline of n frames."""
    few, many = (processor_time(make(n)) for n in (frames // 4, frames))
    return 1000 * (many - few) / (frames - frames // 4)


def best_times(pipelines, rounds, frames):
    """In turns: so a busy machine slows all of them."""
    best = {name: float("inf") for name in pipelines}
    for _ in range(rounds):
        for name, make in pipelines.items():
            best[name] = min(best[name], frame_time(make, frames))
    return best


SINK = "video/x-raw,format=BGRx ! fakesink"


def pipelines_of(size):
    def eight(rest):
        return lambda n: f"{source(n, size, 'GRAY8', 'rggb')} ! {rest}"

    def sixteen(rest):
        return lambda n: f"{source(n, size, 'GRAY16_LE', 'rggb16le')} ! {rest}"

    # Samples of 16 bits reach bayer2rgb through a conversion of gray pictures.
    reduced = (f"{renamed('video/x-raw,format=GRAY16_LE', size)} ! videoconvert dither=none ! "
               f"video/x-raw,format=GRAY8 ! {renamed('video/x-bayer,format=rggb', size)} ! "
               f"bayer2rgb ! {SINK}")
    return {
        "8 bits, nothing": eight("fakesink"),
        "8 bits, vistreldemosaic": eight(f"vistreldemosaic ! {SINK}"),
        "8 bits, bayer2rgb": eight(f"bayer2rgb ! {SINK}"),
        "16 bits, vistreldemosaic": sixteen(f"vistreldemosaic ! {SINK}"),
        "16 bits, reduced, bayer2rgb": sixteen(reduced),
    }


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--size", default="1920x1080")
    parser.add_argument("--frames", type=int, default=800)
    arguments = parser.parse_args()
    size = tuple(int(n) for n in arguments.size.split("x"))
    best = best_times(pipelines_of(size), arguments.rounds, arguments.frames)
    print(f"to BGRx, {arguments.size}, milliseconds of processor time a frame")
    for name, time in best.items():
        print(f"{name:28} {time:6.3f}")
    for bits, peer in ((8, "bayer2rgb"), (16, "reduced, bayer2rgb")):
        ratio = best[f"{bits} bits, {peer}"] / best[f"{bits} bits, vistreldemosaic"]
        print(f"{bits} bits: {ratio:.2f} times as fast as {peer}")


main()
