"""Prints a picture's size, mode and samples, as python3-pil reads them."""
import sys
from PIL import Image

picture = Image.open(sys.argv[1])
print(*picture.size, picture.mode)
for pixel in picture.getdata():
    print(*pixel if isinstance(pixel, tuple) else (pixel,))
