// SPDX-License-Identifier: MIT
// Modules from the folder into which bench/compare-peers installed them; QUILLBAR_PEERS names it.
import { createRequire } from 'node:module';
import path from 'node:path';

export const peerModule = createRequire(path.join(path.resolve(process.env.QUILLBAR_PEERS), 'peers.js'));
