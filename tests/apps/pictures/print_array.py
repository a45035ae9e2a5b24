"""Prints the shape, the type and the samples of an array or a TIFF, as NumPy and tifffile read them."""
import sys
import numpy

path = sys.argv[1]
if path.endswith(".npy"):
    array = numpy.load(path)
else:
    import tifffile
    array = tifffile.imread(path)
print("x".join(map(str, array.shape)), array.dtype)
print(*array.flatten())
