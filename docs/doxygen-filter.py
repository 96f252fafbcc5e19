#!/usr/bin/env python3
"""Makes the headers' plain comments Doxygen's.

A block of // lines becomes ///, the first block of a file its \\file comment, a comment behind a declaration ///<. A
comment that stands above a run of declarations without a blank line between them speaks for all of them, so it is
repeated before each; lines such as "// ---- Life ----" are headings and no documentation. A pair of overloads is shown as its two functions.
"""
import re
import sys

if '--help' in sys.argv or '-h' in sys.argv:
    print(__doc__)
    sys.exit()

text = open(sys.argv[1], encoding='utf-8').read()
text = re.sub(r'KXDEVUI_OVERLOADS\((virtual [^;]*?\)),\s+(virtual [^;]*)\);', r'\1;\n    \2;', text)
lines = text.split('\n')
out, block, carried, first, depth = [], [], [], True, 0

def is_heading(text):
    return re.match(r'//\s*-{3,}', text)

def opens_declaration(text):
    return text and not re.match(r'(#(?!define)|public:|protected:|private:|friend |namespace|\})', text)

complete = True
for line in lines:
    text = line.strip()
    indent = line[:len(line) - len(line.lstrip())]
    if text.startswith('//'):
        if is_heading(text):
            block, carried = [], []
        else:
            if not complete:
                continue
            block.append(text)
        continue
    if not text:
        if block and first:
            out.append('/// \\file')
            out += ['/// ' + each[2:] for each in block]
            first = False
        block, carried = [], []
        out.append('')
        continue
    if first and text.startswith('#') and block:
        out.append('/// \\file')
        out += ['/// ' + each[2:] for each in block]
        block, first = [], False
    if complete and opens_declaration(text):
        if block:
            carried = block
        out += [indent + '///' + each[2:] for each in carried]
    block = []
    if text.startswith(('public:', 'protected:', 'private:', 'class ', 'struct ', 'enum ')) and text.endswith(('{', ':')):
        carried = []
    out.append(re.sub(r'([;,{])(\s+)// ', r'\1\2///< ', line))
    if text.startswith('template') and not text.endswith((';', '{')):
        complete = False
        continue
    complete = text.endswith((';', '{', '}', ':', ',')) or text.startswith('#') or '//' in text
sys.stdout.write('\n'.join(out))
