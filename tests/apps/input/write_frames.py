"""Writes the frame in a PGM as files of many kinds, by numpy's friends; prints their names.

Those that are missing write nothing. The PGM is binary, without comments, its maxval 4095.
"""
import sys
import numpy

with open(sys.argv[1], 'rb') as file:
    head, body = file.read().split(b'4095\n', 1)
width, height = map(int, head.split()[1:])
frame = numpy.frombuffer(body, '>u2').reshape(height, width).astype('uint16')


def write_tifffile():
    import tifffile
    for name, options in {
            'plain': {}, 'zlib': {'compression': 'zlib'}, 'big': {'byteorder': '>'},
            'tiles': {'compression': 'zlib', 'tile': (16, 32)},
            'predictor': {'compression': 'zlib', 'predictor': True},
            'white': {'photometric': 'miniswhite'}, 'bigtiff': {'bigtiff': True}}.items():
        samples = 65535 - frame if name == 'white' else frame
        tifffile.imwrite(f'tifffile-{name}.tif', samples, **options)
        yield f'tifffile-{name}.tif'


def write_astropy():
    from astropy.io import fits
    for name, samples in {'16': frame, '32': frame.astype('int32'), 'float': frame.astype('float32'),
                          'double': frame.astype('float64')}.items():
        for extension in ('fits', 'fits.gz'):
            fits.writeto(f'astropy-{name}.{extension}', samples, overwrite=True)
            yield f'astropy-{name}.{extension}'
    for compression in ('RICE_1', 'GZIP_1', 'GZIP_2'):
        name = f'astropy-{compression}.fits.fz'
        tiles = fits.CompImageHDU(frame, compression_type=compression)
        fits.HDUList([fits.PrimaryHDU(), tiles]).writeto(name, overwrite=True)
        yield name
    tiles = fits.CompImageHDU(frame.astype('float32'), compression_type='GZIP_2', quantize_level=0)
    fits.HDUList([fits.PrimaryHDU(), tiles]).writeto('astropy-tiles.fits', overwrite=True)
    yield 'astropy-tiles.fits'


def write_pil():
    from PIL import Image
    for extension in ('png', 'tif'):
        Image.fromarray(frame).save(f'pil.{extension}')
        yield f'pil.{extension}'


for write in write_tifffile, write_astropy, write_pil:
    try:
        print(*write())
    except ImportError:
        pass
