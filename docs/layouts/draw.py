#!/usr/bin/env python3
"""Draws the layouts of images in memory: python3 docs/layouts/draw.py rewrites the pictures beside it.

A picture is a title and a few grids. A grid is a caption and its rows, each a line of cells; one after another they lie
in memory from left to right. A cell is LABEL, LABEL:UNITS for one wider than a sample, or LABEL@STYLE for one that is
not in the colour of its label. Heavy lines frame the cells that belong together, `group` columns by rows at a time.
"""
from pathlib import Path
from xml.sax.saxutils import escape

COLOURS = {
    'Y': '#cfcfcf', 'Cb': '#a9c4f5', 'Cr': '#f3aaa4', 'U': '#a9c4f5', 'V': '#f3aaa4',
    'R': '#f3aaa4', 'G': '#a8d8a4', 'B': '#a9c4f5', 'A': '#ffffff', '': '#ffffff',
    'H': '#e3c2ee', 'L': '#cfcfcf', 'S': '#f6dea0', 'Co': '#f6cfa0', 'Cg': '#a8d8a4',
    'dark': '#a6a6a6', 'light': '#cfcfcf', 'pad': 'url(#pad)', 'kept': '#ffffff',
}
HEIGHT = 24       # of a cell
INK, FAINT = '#303030', '#6e6e6e'


class Grid:
    def __init__(self, caption, *rows, group=(1, 1), pad=0, unit=32, heads=None, notes=()):
        self.caption, self.rows, self.group, self.unit = caption, [row.split() for row in rows], group, unit
        self.pad, self.heads, self.notes = pad, heads, notes
        self.cells = sum(units(cell) for cell in self.rows[0])

    def width(self):
        grid = (self.cells + self.pad) * self.unit
        return max(grid + max((8 + 7 * len(note) for note in self.notes), default=0), 7 * len(self.caption))

    def height(self):
        return 22 + (14 if self.heads else 0) + HEIGHT * len(self.rows) + (26 if self.pad else 4)

    def draw(self, x, y):
        yield text(x, y + 13, self.caption, 'start')
        y += 22
        if self.heads:
            for i, head in enumerate(self.heads):
                yield text(x + (i + 0.5) * self.unit, y + 9, head, size=9, fill=FAINT)
            y += 14
        for r, row in enumerate(self.rows):
            at, top = x, y + r * HEIGHT
            for cell in row + ['@pad'] * self.pad:
                yield from self.draw_cell(cell, at, top)
                at += units(cell) * self.unit
            if r < len(self.notes):
                yield text(at + 8, top + 16, self.notes[r], 'start', fill=FAINT)
        across, down = self.group
        if across * down > 1:
            for r in range(0, len(self.rows), down):
                for c in range(0, self.cells, across):
                    yield rect(x + c * self.unit, y + r * HEIGHT, min(across, self.cells - c) * self.unit,
                               min(down, len(self.rows) - r) * HEIGHT, 'none', 2)
        if self.pad:
            right, below = x + (self.cells + self.pad) * self.unit, y + len(self.rows) * HEIGHT
            yield from dimension(x, right, below + 12, 'step')

    def draw_cell(self, cell, x, y):
        label, style = cell.split(':')[0].split('@')[0], cell.partition('@')[2]
        colour = COLOURS[style or label.rstrip('0123456789')]
        yield rect(x, y, units(cell) * self.unit, HEIGHT, colour, 1, dashed=style == 'kept')
        if label:
            yield text(x + units(cell) * self.unit / 2, y + 16, label)


def units(cell):
    return int(cell.partition(':')[2].partition('@')[0] or 1)


def rect(x, y, width, height, fill, line, dashed=False):
    dash = ' stroke-dasharray="3 3"' if dashed else ''
    return f'<rect x="{x:g}" y="{y:g}" width="{width:g}" height="{height:g}" fill="{fill}" stroke="{INK}" ' \
           f'stroke-width="{line}"{dash}/>'


def text(x, y, label, anchor='middle', size=12, fill=INK):
    return f'<text x="{x:g}" y="{y:g}" text-anchor="{anchor}" font-size="{size}" fill="{fill}">' \
           f'{escape(str(label))}</text>'


def dimension(left, right, y, label):
    """A measure from one place to another, as in a technical drawing."""
    middle, gap = (left + right) / 2, 4 * len(label) + 4
    yield f'<path d="M{left:g} {y - 5}v10M{right:g} {y - 5}v10M{left:g} {y}H{middle - gap:g}M{middle + gap:g} {y}' \
          f'H{right:g}" stroke="{FAINT}" fill="none"/>'
    yield text(middle, y + 4, label, fill=FAINT)


def picture(title, grids, across):
    """Grids beside one another, `across` in a line."""
    margin, gap, parts = 12, 28, []
    y, right = margin, 0
    columns = [max(grid.width() for grid in grids[c::across]) for c in range(min(across, len(grids)))]
    for first in range(0, len(grids), across):
        line, x = grids[first:first + across], margin
        for grid, width in zip(line, columns):
            parts += grid.draw(x, y)
            x += width + gap
        right, y = max(right, x - gap), y + max(grid.height() for grid in line) + 8
    width, height = right + margin, y - 8 + margin / 2
    return '\n'.join([
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{width:g}" height="{height:g}" '
        f'viewBox="0 0 {width:g} {height:g}" font-family="monospace">',
        f'<title>{escape(title)}</title>',
        '<pattern id="pad" width="6" height="6" patternUnits="userSpaceOnUse"><rect width="6" height="6" '
        'fill="#f4f4f4"/><path d="M0 6L6 0" stroke="#c4c4c4"/></pattern>',
        rect(0.5, 0.5, width - 1, height - 1, '#fbfbfb', 0).replace('<rect ', '<rect rx="6" '),
        *parts, '</svg>', ''])


def numbered(names, count):
    """The names one after another, with the numbers 0 to count - 1."""
    return ' '.join(name + str(i) for i in range(count) for name in names.split())


def packed422(order, pairs=2):
    """Pairs of pixels in an order such as 'Y Cb Y Cr': luma is numbered by pixel, chroma by pair."""
    cells = []
    for pair in range(pairs):
        pixel = 2 * pair
        for name in order.split():
            cells.append(f'{name}{pixel if name == "Y" else pair}')
            pixel += name == 'Y'
    return ' '.join(cells)


def planes(columns, rows, across, down, chroma_names=('Cb', 'Cr')):
    """Planes of Y, Cb and Cr with a chroma pair for `across` by `down` pixels."""
    luma, chroma = numbered('Y', columns), columns // across
    return [Grid('Y', *[luma] * rows, group=(across, down), pad=2)] + [
        Grid(name, *[numbered(name, chroma)] * (rows // down), pad=1) for name in chroma_names]


def pairs(columns, rows, across, down):
    """A plane of Y and a plane of pairs, for `across` by `down` pixels each."""
    return [Grid('Y', *[numbered('Y', columns)] * rows, group=(across, down), pad=2),
            Grid('Cb, Cr', *[numbered('Cb Cr', columns // across)] * (rows // down), group=(2, 1), pad=2)]


def bits(red, green, blue, top):
    """A 16-bit pixel in both orders of its channels, the highest bit on the left."""
    unused = f'0:{top}@A ' if top else ''
    return [Grid(f'{name}{red}{green}{blue}', f'{unused}{high}:{red} G:{green} {low}:{blue}', unit=20,
                 heads=range(15, -1, -1)) for name, high, low in (('BGR', 'R', 'B'), ('RGB', 'B', 'R'))]


def whole(names, pixels=3):
    """Two rows of interleaved pixels."""
    return Grid(names, *[numbered(names, pixels)] * 2, group=(len(names.split()), 1), pad=2)


def kept(names, pixels=2):
    """Interleaved pixels whose fourth channel is passed over."""
    cells = ' '.join(f'{numbered(names, 1).replace("0", str(i))} A{i}@kept' for i in range(pixels))
    return Grid(f'{names} and alpha', *[cells] * 2, group=(4, 1), pad=2)


def mosaic(name, first, second):
    return Grid(f'zumiBayer{name}', *[f'{first} {first}', f'{second} {second}'] * 2, group=(2, 2))


def fields(columns, rows):
    line = numbered('Y', columns)
    second = ' '.join(cell + '@dark' for cell in line.split())
    return Grid('Y', *([line, second] * rows)[:rows],
                notes=[f'row {r}, {"second" if r % 2 else "first"} field' for r in range(rows)])


def weights(caption, at, rows, *around):
    """The weights of rows in a filter, the first that of row `at`."""
    of = dict(enumerate(around, at))
    return Grid(caption, *[f'{of[r]}@{"dark" if r % 2 else "light"}' if r in of else '@' for r in range(rows)])


def separate(names):
    return [Grid(name, *[numbered(name, 4)] * 2, pad=1) for name in names]


def band(name, rows, top, bottom):
    """What the call for the rows from `top` to `bottom` does, in a picture of so many rows."""
    begin, end = (top if top == 0 else top - 2), (bottom if bottom == rows else bottom - 2)
    first, last = max(begin - 1, 0), min(end, rows - 1)
    return Grid(name, *['written@dark' if begin <= r < end else 'read@light' if first <= r <= last else '@'
                        for r in range(rows)], unit=70)


def bands(rows, height):
    return [Grid('Y', *[numbered('Y', 4)] * rows, group=(4, height), notes=[f'row {r}' for r in range(rows)])] + [
        band(name, rows, top, top + height) for name, top in (
            ('zumTopBand', 0), ('zumMiddleBand', height), ('zumBottomBand', rows - height))]


def pair_rows(columns, rows):
    return Grid('Cb, Cr', *[numbered('Cb Cr', columns // 2)] * rows, group=(2, 1),
                notes=[f'row {r}' for r in range(rows)])


# Name: title, grids, how many of them stand in a line.
PICTURES = {
    'c1': ('One channel', [Grid('Y', *[numbered('Y', 6)] * 2, pad=2)], 1),
    'c2-ycbcr': ('Packed 4:2:2, Y0 Cb Y1 Cr', [Grid('YCbCr', *[packed422('Y Cb Y Cr')] * 2, group=(4, 1), pad=2)], 1),
    'c2-ycrcb': ('Packed 4:2:2, Y0 Cr Y1 Cb', [Grid('YCrCb', *[packed422('Y Cr Y Cb')] * 2, group=(4, 1), pad=2)], 1),
    'c2-cbycr': ('Packed 4:2:2, Cb Y0 Cr Y1', [Grid('CbYCr', *[packed422('Cb Y Cr Y')] * 2, group=(4, 1), pad=2)], 1),
    'c2-yuv': ('Packed 4:2:2, Y0 U Y1 V', [Grid('YUV', *[packed422('Y U Y V')] * 2, group=(4, 1), pad=2)], 1),
    'c3': ('Three interleaved channels', [whole('R G B')], 1),
    'c3-bgr': ('Three interleaved channels of BGR', [whole('B G R')], 1),
    'c3-ycbcr': ('Three interleaved channels of YCbCr', [whole('Y Cb Cr')], 1),
    'c4': ('Four interleaved channels', [whole('B G R A', 2)], 1),
    'ac4': ('Four interleaved channels, the fourth is alpha', [kept('R G B')], 1),
    'ac4-bgr': ('Four interleaved channels of BGR and alpha', [kept('B G R')], 1),
    'p3-rgb': ('Three planes of RGB', separate('RGB'), 3),
    'p3-hls': ('Three planes of HLS', separate('HLS'), 3),
    'p3-ycocg': ('Three planes of YCoCg', separate(('Y', 'Co', 'Cg')), 3),
    'p3-444': ('Three planes, 4:4:4', planes(4, 2, 1, 1), 3),
    'p3-422': ('Three planes, 4:2:2', planes(4, 2, 2, 1), 3),
    'p3-420': ('Three planes, 4:2:0', planes(4, 4, 2, 2), 3),
    'p3-411': ('Three planes, 4:1:1', planes(8, 2, 4, 1), 3),
    'p3-1620': ('Three planes, a chroma pair for four by four pixels', planes(8, 4, 4, 4), 3),
    'p3-yuv422': ('Three planes of YUV, 4:2:2', planes(4, 2, 2, 1, ('U', 'V')), 3),
    'p3-yuv420': ('Three planes of YUV, 4:2:0', planes(4, 4, 2, 2, ('U', 'V')), 3),
    'p2-420': ('A plane of Y and a plane of pairs, 4:2:0', pairs(4, 4, 2, 2), 2),
    'p2-411': ('A plane of Y and a plane of pairs, 4:1:1', pairs(8, 2, 4, 1), 2),
    'ap4': ('Four planes, the fourth is alpha', separate('HLSA') + separate('BGRA'), 4),
    '565': ('16-bit pixels of 5, 6 and 5 bits', bits(5, 6, 5, 0), 2),
    '555': ('16-bit pixels of 5, 5 and 5 bits', bits(5, 5, 5, 1), 2),
    '444': ('16-bit pixels of 4, 4 and 4 bits', bits(4, 4, 4, 4), 2),
    'cfa': ('The four phases of a colour filter array', [
        mosaic('BGGR', 'B G', 'G R'), mosaic('RGGB', 'R G', 'G B'),
        mosaic('GBRG', 'G B', 'R G'), mosaic('GRBG', 'G R', 'B G')], 4),
    'field': ('The rows of two fields, and the filter of luma', [
        fields(4, 6), weights('row 2, in quarters', 1, 6, 1, 2, 1), pair_rows(4, 3)], 3),
    'bands': ('What the calls for three bands of four rows read and write', bands(12, 4), 4),
}


def main():
    for name, (title, grids, across) in PICTURES.items():
        Path(__file__).with_name(name + '.svg').write_text(picture(title, grids, across))


if __name__ == '__main__':
    main()
