// SPDX-License-Identifier: Apache-2.0

// A document whose pages bear their numbers. `sizes` are used in turn; `scripts` gives it a script that reports
// itself when it is opened, `link` one on page 1 to the last page, `form` gives the catalog entries.
export function pdfFile(pages, { sizes = [[595, 842]], scripts = false, link = false, form = '' } = {}) {
  const objects = [];
  const add = (text) => objects.push(text);
  const kids = Array.from({ length: pages }, (_, index) => `${4 + 2 * index} 0 R`);
  const action = scripts ? '/OpenAction << /S /JavaScript /JS (app.alert\\("ran"\\); document.title = "ran";) >>' : '';
  add(`<< /Type /Catalog /Pages 2 0 R ${action} ${form} >>`);
  add(`<< /Type /Pages /Count ${pages} /Kids [${kids.join(' ')}] >>`);
  add('<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>');
  for (let number = 1; number <= pages; number += 1) {
    const [width, height] = sizes[(number - 1) % sizes.length];
    const lines = Array.from({ length: Math.floor((height - 200) / 20) }, (_, at) => '0 -20 Td ' +
      `(Line ${at + 1} of page ${number}: keep the exits clear, know the way out, close the doors.) Tj`);
    const text = `BT /F 40 Tf 60 ${height - 100} Td (Page ${number}) Tj /F 11 Tf 0 -20 Td ${lines.join(' ')} ET`;
    const links = link && number === 1 ? `/Annots [<< /Type /Annot /Subtype /Link /Rect [60 ${height - 110} 200 ` +
      `${height - 60}] /Dest [${2 + 2 * pages} 0 R /Fit] >>]` : '';
    add(`<< /Type /Page /Parent 2 0 R /MediaBox [0 0 ${width} ${height}] ${links} ` +
      `/Contents ${3 + 2 * number} 0 R /Resources << /Font << /F 3 0 R >> >> >>`);
    add(`<< /Length ${text.length} >>\nstream\n${text}\nendstream`);
  }
  let file = '%PDF-1.7\n';
  const offsets = objects.map((object, index) => {
    const offset = file.length;
    file += `${index + 1} 0 obj\n${object}\nendobj\n`;
    return `${String(offset).padStart(10, '0')} 00000 n \n`;
  });
  return Buffer.from(`${file}xref\n0 ${objects.length + 1}\n0000000000 65535 f \n${offsets.join('')}` +
    `trailer << /Size ${objects.length + 1} /Root 1 0 R >>\nstartxref\n${file.length}\n%%EOF\n`, 'latin1');
}
