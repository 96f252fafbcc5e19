#!/usr/bin/env python3
"""tests/svg/icons.py [SEED] : draws 760 foreign icons of Debian's themes as they are shipped, with our renderer and with
librsvg, at 48 x 48 on white. An icon agrees when at most 1 % of its pixels differ, by more than 24 in a channel; 740 have to.
The others are listed. The themes are unpacked beside the build, nothing is installed of them.

Needs clang, librsvg2-bin, imagemagick and Debian's package sources."""
import concurrent.futures, hashlib, os, pathlib, random, subprocess, sys

if sys.argv[1:] == ['--help']:
    sys.exit(print(__doc__))
THEMES = ('adwaita-icon-theme breeze-icon-theme elementary-icon-theme elementary-xfce-icon-theme faenza-icon-theme '
          'mate-icon-theme numix-icon-theme papirus-icon-theme suru-icon-theme tango-icon-theme').split()
COUNT, SIDE, OFF, SHARE, LEAST = 760, 48, 24, 0.01, 740
seed = int(sys.argv[1]) if sys.argv[1:] else 1
root = pathlib.Path(__file__).resolve().parents[2]
out = pathlib.Path(os.environ.get('KXDEVUI_BUILD_ROOT', root / 'build')) / 'icons'
out.mkdir(parents=True, exist_ok=True)
render = out / 'render'
sources = [root / f'modules/kxbaseui/kx_{part}.cpp' for part in ('path', 'raster', 'svg', 'svgsheet', 'svgstyle', 'svgvalues', 'xml')]
subprocess.run(['clang++', '-std=c++20', '-O2', '-DKXBASEUI_STATIC', f'-I{root}/modules', root / 'tests/svg/render.cpp', *sources,
                '-o', render], check=True)

def unpack(theme):
    folder = out / theme
    if not folder.exists():
        subprocess.run(['apt-get', 'download', '-qq', theme], cwd=out, check=True)
        package, = out.glob(f'{theme}_*.deb')
        subprocess.run(['dpkg-deb', '-x', package, folder], check=True)
    return sorted(path for path in folder.rglob('*.svg') if path.is_file() and not path.is_symlink())

def pixels(command, file):
    done = subprocess.run(command, stdin=file, capture_output=True)
    return done.stdout[-3 * SIDE * SIDE:] if done.returncode == 0 and done.stdout else b''

# The share of pixels that differ, or why there is none.
def compare(path):
    ours = pixels([render, path, str(SIDE), '/dev/stdout'], None)
    png = subprocess.run(['rsvg-convert', '-a', '-w', str(SIDE), '-h', str(SIDE), '-b', 'white', path], capture_output=True)
    drawn = subprocess.run(['convert', 'png:-', '-background', 'white', '-gravity', 'center', '-extent', f'{SIDE}x{SIDE}',
                            '-depth', '8', 'rgb:-'], input=png.stdout, capture_output=True).stdout
    if not ours or len(drawn) != len(ours):
        return 'refused' if drawn else 'refused by both'
    apart = [abs(a - b) > OFF for a, b in zip(ours, drawn)]
    return sum(any(apart[i:i + 3]) for i in range(0, len(apart), 3)) / (SIDE * SIDE)

files = [path for theme in THEMES for path in unpack(theme)]
different = {hashlib.sha1(path.read_bytes()).digest(): path for path in reversed(files)}
icons = random.Random(seed).sample(sorted(different.values()), COUNT)
with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
    results = list(pool.map(compare, icons))
good = 0
for path, result in zip(icons, results):
    if isinstance(result, float) and result <= SHARE or result == 'refused by both':
        good += 1
    else:
        print(f'{result if isinstance(result, str) else f"{result:.1%} differ"}: {path.relative_to(out)}')
print(f'{good} of {len(icons)} icons agree (seed {seed}, of {len(different)} different ones)')
sys.exit(good < LEAST)
