// SPDX-License-Identifier: Apache-2.0
sendPageView(this.pageNum);
