# Writes a small model file (a box and a hidden light, both in one stance) from the byte layouts
# in docs/archive_format.md and docs/model_file.md alone: the seed of the fuzz corpus.
#   python3 fuzz/make_seed.py fuzz/corpus/two_objects_one_stance.tsm
import struct, uuid, sys
def i32(v): return struct.pack('<i', v)
def dbl(v): return struct.pack('<d', v)
def uid(text):
    b = uuid.UUID(text).bytes  # big-endian fields
    d1, d2, d3 = struct.unpack('>IHH', b[:8])
    return struct.pack('<IHH', d1, d2, d3) + b[8:]
def string(s):
    u = s.encode('utf-16-le'); return i32(len(u)//2) + u
def chunk(b): return i32(len(b)) + b
def xform(m): return b''.join(dbl(v) for row in m for v in row)
I = [[1,0,0,0],[0,1,0,0],[0,0,1,0],[0,0,0,1]]
T = [[1,0,0,5],[0,1,0,0],[0,0,1,0],[0,0,0,1]]
def obj(class_uuid, body, userdata=b'', n=0):
    return uid(class_uuid) + chunk(chunk(body) + i32(n) + userdata)
stance = '1E2D3C4B-5A69-4788-9766-554433221100'
record = i32(0) + string('Place Holder') + xform(T) + i32(1) + uid(stance) + xform(I)
ud = obj('4C865638-2D45-4f5d-9F10-618A0DBD3978', record)
corners = [(0,0,0),(1,0,0),(1,1,0),(0,1,0),(0,0,1),(1,0,1),(1,1,1),(0,1,1)]
box = obj('7A2C6B94-1E3F-4D58-B0A9-5C7E8D2F1A36', i32(8) + b''.join(dbl(c) for p in corners for c in p), ud, 1)
light = obj('85A08513-F383-11d3-BFE7-0010830122F0', b''.join(dbl(c) for c in (1,2,3,0,0,-1)) + dbl(1.0), ud, 1)
def record_of(oid, name, mode, geo): return chunk(uid(oid) + string(name) + i32(mode) + string('') + geo)
objects = [record_of('0A0B0C0D-0E0F-4011-8213-141516171819', 'door', 0, box),
           record_of('1A1B1C1D-1E1F-4021-8223-242526272829', 'lamp', 2, light)]
block = i32(0) + string('Place Holder') + string('Place Holder') + i32(1) + uid(stance) + string('Front')
data = string('Tarsa model file') + i32(1) + i32(len(objects)) + b''.join(objects) + i32(1) + uid('FCEA57AE-7C24-4BC5-A067-1DFFA6139859') + chunk(block)
open(sys.argv[1], 'wb').write(data)
