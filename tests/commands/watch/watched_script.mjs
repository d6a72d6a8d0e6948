// SPDX-License-Identifier: MIT
// Starts `quillbar watch` in a folder, for the tests beside this file.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import fs from 'node:fs';
import path from 'node:path';

export const sleep = milliseconds => new Promise(resolve => setTimeout(resolve, milliseconds));

/** Waits until `look` gives something true, and returns it; fails after a minute with what it was waiting for. */
export async function until(what, look) {
  const end = Date.now() + 60_000;
  for (;;) {
    const found = await look();
    if (found) return found;
    assert(Date.now() < end, `waited in vain for ${what}`);
    await sleep(50);
  }
}

export class WatchedScript {
  /** Files are written before the start. */
  static async start(quillbar, folder, files, options = []) {
    const watched = new WatchedScript();
    watched.folder = folder;
    for (const [name, text] of Object.entries(files)) watched.write(name, text);
    watched.printed = '';
    watched.process = spawn(quillbar, ['watch', ...options, 'script.xojo_script', 'from the command line'],
      { cwd: folder, stdio: ['ignore', 'pipe', 'pipe'] });
    watched.ended = new Promise(resolve => watched.process.on('exit', (status, signal) => resolve(status ?? signal)));
    for (const stream of [watched.process.stdout, watched.process.stderr]) {
      stream.on('data', data => { watched.printed += data; });
    }
    watched.address = (await until('the address', () => /http:\S+/.exec(watched.printed)))[0];
    return watched;
  }

  write(name, text) { fs.writeFileSync(path.join(this.folder, name), text); }
  has(name) { return fs.existsSync(path.join(this.folder, name)); }

  /** Ends the program as Ctrl-C does, and returns its exit status. */
  async stop() {
    this.process.kill('SIGINT');
    return this.ended;
  }
}
