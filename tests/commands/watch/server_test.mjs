// SPDX-License-Identifier: MIT
// node server_test.mjs QUILLBAR FOLDER: what `quillbar watch` serves, and when it runs the script again.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import http from 'node:http';
import path from 'node:path';
import { WatchedScript, sleep, until } from './watched_script.mjs';

const [quillbar, folder] = process.argv.slice(2);
const script = `Dim d As New PDFDocument
Dim t As TextInputStream = TextInputStream.Open(New FolderItem("data.txt"))
For i As Integer = 1 To Val(t.ReadLine)
  Dim p As Page = d.AddPage
  p.Draw
Next
Print Arguments(0)
d.Save(New FolderItem("out.pdf"))
`;
const watched = await WatchedScript.start(quillbar, folder, { 'script.xojo_script': script, 'data.txt': '3\n' });
const address = new URL(watched.address);

/** A request with any headers, which fetch doesn't let through. */
const ask = (location, headers = {}) => new Promise((resolve, reject) => {
  http.get({ host: address.hostname, port: address.port, path: location, headers }, response => {
    const parts = [];
    response.on('data', part => parts.push(part));
    response.on('end', () => resolve({ status: response.statusCode, headers: response.headers, body: Buffer.concat(parts) }));
  }).on('error', reject);
});
const state = async () => JSON.parse((await ask(address.pathname + 'state')).body);
const settled = condition => until('a state of the page', async () => {
  const now = await state();
  return !now.running && condition(now) && now;
});
const pagesOf = async now => (await ask(address.pathname + now.documents[0].address)).body.toString('latin1').match(/\/Type \/Page\b/g).length;

try {
  assert.equal(address.hostname, '127.0.0.1');
  assert.match(address.pathname, /^\/[0-9a-f]{32}\/$/);
  let now = await settled(one => one.documents.length === 1);
  assert.equal(now.status, 0);
  assert.equal(now.output, 'from the command line\n');
  assert.equal(now.errors, '');
  assert.equal(now.documents[0].name, 'out.pdf');
  assert(now.seconds > 0 && now.seconds < 30);
  assert.equal(await pagesOf(now), 3);

  // Nothing but the page and this run's documents, and nothing without the token or for another host.
  const document = await ask(address.pathname + now.documents[0].address);
  assert.equal(document.headers['content-type'], 'application/pdf');
  assert.deepEqual(document.body, fs.readFileSync(path.join(folder, 'out.pdf')));
  assert.equal((await ask(address.pathname)).status, 200);
  for (const location of ['/', '/state', address.pathname + 'data.txt', address.pathname + 'documents/1/1',
    address.pathname + 'documents/../data.txt', address.pathname + '../script.xojo_script',
    address.pathname.replace(/.\/$/, '/'), '/' + '0'.repeat(32) + '/']) {
    assert.equal((await ask(location)).status, 404, location);
  }
  assert.equal((await ask(address.pathname, { Host: 'evil.example' })).status, 403);
  assert.equal((await ask(address.pathname, { Host: `localhost:${address.port}` })).status, 200);

  // A file that the script reads.
  const first = now.revision;
  await sleep(600);
  assert.equal((await state()).revision, first, 'nothing changed, so nothing ran');
  watched.write('data.txt', '5\n');
  now = await settled(one => one.revision > first);
  assert.equal(await pagesOf(now), 5);
  assert(!now.earlier);

  // An error, which keeps the last document; then it goes.
  watched.write('script.xojo_script', script + 'Print nonsense\n');
  now = await settled(one => one.status === 1);
  assert.match(now.errors, /script\.xojo_script:9:7: error: "nonsense" is not known\n/);
  assert(now.earlier);
  assert.equal(await pagesOf(now), 5);
  assert(watched.has('out.pdf'), 'a run that failed takes nothing away');
  watched.write('script.xojo_script', script);
  now = await settled(one => one.status === 0);
  assert.equal(now.errors, '');

  // A run that never ends is given up when something changes.
  watched.write('script.xojo_script', 'Print "endless"\nWhile True\nWend\n');
  await until('the endless run', async () => (await state()).running);
  await sleep(300);
  assert((await state()).running);
  watched.write('script.xojo_script', script);
  now = await settled(one => one.status === 0);
  assert.equal(await pagesOf(now), 5);

  // A file of someone else's stays, and is told of.
  watched.write('mine.pdf', 'mine');
  watched.write('script.xojo_script', script.replaceAll('out.pdf', 'mine.pdf'));
  now = await settled(one => one.hint !== '');
  assert.match(now.hint, /^mine\.pdf was there before/);
  assert.equal(fs.readFileSync(path.join(folder, 'mine.pdf'), 'latin1'), 'mine');

  // A file that is not there yet.
  watched.write('script.xojo_script', 'Print New FolderItem("later.txt").Exists\n');
  await settled(one => one.output === 'False\n');
  watched.write('later.txt', '');
  await settled(one => one.output === 'True\n');

  // A file that the script writes doesn't start it again.
  watched.write('script.xojo_script', 'Dim t As TextOutputStream = TextOutputStream.Create(New FolderItem("log.txt"))\n'
    + 't.Write(Str(Microseconds))\nt.Close\nPrint "written"\n');
  now = await settled(one => one.output === 'written\n');
  await sleep(1500);
  assert((await state()).revision <= now.revision + 2, 'at most one run more, to see who changes the file');
  const last = (await state()).revision;
  await sleep(1000);
  assert.equal((await state()).revision, last);

  assert.equal(await watched.stop(), 0);
  assert.match(watched.printed, /Ran in \d+\.\d\d s: out\.pdf\n/);
  console.log('done');
} finally {
  watched.process.kill('SIGKILL');
}
