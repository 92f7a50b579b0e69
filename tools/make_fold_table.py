#!/usr/bin/env python3
"""Writes base/fold_table.inc: what each letter becomes before texts are compared (base/fold_text.h).

Made from the Unicode Character Database that comes with Python, without the network:
  tools/make_fold_table.py >base/fold_table.inc
Compatibility decomposition, marks dropped, full case folding, decimal digits as 0 to 9. Of what has
no decomposition and is searched for without its stroke or curl, the list below. The basic plane
alone, without what stands for whole words or only in old standards; Hangul is computed.
"""
import unicodedata as ucd

OWN = {'ø': 'o', 'ł': 'l', 'đ': 'd', 'ħ': 'h', 'ŧ': 't', 'ð': 'd', 'þ': 'th', 'æ': 'ae', 'œ': 'oe',
       'ı': 'i', '`': "'", '´': "'", 'ʼ': "'", '‘': "'", '’': "'", '‛': "'", '“': '"', '”': '"',
       '„': '"', '«': '"', '»': '"', '‐': '-', '‑': '-', '‒': '-', '–': '-', '—': '-', '−': '-',
       '⁄': '/'}
LEFT_OUT = [(0x13A0, 0x13FF), (0x1D00, 0x1DBF), (0x2070, 0x209F), (0x2150, 0x218F),
            (0x2200, 0x2211), (0x2213, 0x2FFF), (0x3130, 0x33FF), (0xA6A0, 0xA6FF),
            (0xAB70, 0xABBF), (0xAC00, 0xFAFF), (0xFB50, 0xFDFF), (0xFE70, 0xFEFE),
            (0xFFE0, 0xFFFF)]
KEPT = [(0x2C00, 0x2DFF)]  # of those


def is_dropped(c):
    kind, place = ucd.category(c), ucd.combining(c)
    # Not the vowels and tones of the scripts that write them as marks.
    mark = kind in ('Mn', 'Me') and (place in (1, 7, 8) or 10 <= place <= 36 or place >= 200)
    return mark or kind == 'Cf' or 0xFE00 <= ord(c) <= 0xFE0F or c == '\u0640'


def bare(text):
    return ''.join(c for c in ucd.normalize('NFKD', text) if not is_dropped(c))


def folded(c):
    if c in OWN:
        return OWN[c]
    out = ''
    for one in bare(bare(c).casefold()):
        out += OWN.get(one, str(ucd.digit(one)) if ucd.category(one) == 'Nd' else one)
    return out


def is_listed(code):
    within = lambda spans: any(first <= code <= last for first, last in spans)
    return ucd.category(chr(code)) != 'Cn' and (within(KEPT) or not within(LEFT_OUT))


table = {}
for code in range(0x60, 0x10000):
    if is_listed(code) and folded(chr(code)) != chr(code):
        table[code] = folded(chr(code))

runs, texts, done = [], [], set()
for code, text in sorted(table.items()):
    if code in done:
        continue
    if len(text) > 1:
        texts.append((code, text))
        continue
    best = []
    for step, by in ((1, 0), (1, 1), (2, 2)) if text else ((1, 0),):
        run = [code]
        while True:
            following = run[-1] + step
            wanted = chr(ord(text) + (following - code if by else 0)) if text else ''
            between = table.keys() & set(range(run[-1] + 1, following))
            if table.get(following) != wanted or between:
                break
            run.append(following)
        if len(run) > len(best):
            best, kind = run, by
    runs.append((code, best[-1], ord(text) if text else 0, kind))
    done.update(best)


def rows(items, per_line):
    for at in range(0, len(items), per_line):
        print(' '.join(items[at:at + per_line]))


print(f'// Written by tools/make_fold_table.py from the data of Unicode {ucd.unidata_version}.')
print('// RUN(first, last, to, step): of step 0 all become `to`, or go where that is 0; else each')
print('// `step`-th one becomes as much after `to` as it is after `first`.')
rows([f'RUN(0x{a:04X}, 0x{b:04X}, 0x{to:04X}, {step})' for a, b, to, step in runs], 3)
rows(['TEXT(0x%04X, u"%s")' % (code, ''.join('\\u%04X' % ord(c) if ord(c) > 0x7E else c
      for c in text).replace('"', '\\"')) for code, text in texts], 3)
