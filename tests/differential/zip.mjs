// SPDX-License-Identifier: Apache-2.0

function crc32(data) {
  let sum = ~0;
  for (const byte of data) {
    sum ^= byte;
    for (let bit = 0; bit < 8; ++bit) sum = (sum >>> 1) ^ (sum & 1 ? 0xedb88320 : 0);
  }
  return ~sum >>> 0;
}

/** A ZIP archive of one stored file. */
export function zip(name, text) {
  const path = Buffer.from(name);
  const data = Buffer.from(text);
  const common = Buffer.alloc(26);
  common.writeUInt16LE(20, 0);
  common.writeUInt32LE(0x00210000, 6);
  common.writeUInt32LE(crc32(data), 10);
  common.writeUInt32LE(data.length, 14);
  common.writeUInt32LE(data.length, 18);
  common.writeUInt16LE(path.length, 22);
  const local = Buffer.concat([Buffer.from("PK\x03\x04", "latin1"), common, path, data]);
  const central = Buffer.concat([Buffer.from("PK\x01\x02\x14\x00", "latin1"), common, Buffer.alloc(14), path]);
  const end = Buffer.alloc(22);
  end.write("PK\x05\x06", 0, "latin1");
  end.writeUInt16LE(1, 8);
  end.writeUInt16LE(1, 10);
  end.writeUInt32LE(central.length, 12);
  end.writeUInt32LE(local.length, 16);
  return Buffer.concat([local, central, end]);
}
